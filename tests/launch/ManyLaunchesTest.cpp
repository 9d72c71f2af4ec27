// Programs that end at once, one after the other, as many as a long day brings.

#include "tests/launch/LaunchFixture.h"

#include <cstdlib>
#include <iterator>
#include <malloc.h>
#include <sys/wait.h>

using namespace kvtm;
using namespace kvtm::test;

namespace {

class ManyLaunches : public LaunchingTest {
protected:
    /// Launches of one test run; the variable asks for more, such as 10000.
    static int Count() {
        const char* wanted = std::getenv("KVTM_LAUNCHES");
        return wanted ? std::atoi(wanted) : 1000;
    }
    static std::ptrdiff_t OpenDescriptors() {
        const std::filesystem::directory_iterator all("/proc/self/fd");
        return std::distance(begin(all), end(all));
    }
    static std::size_t UsedMemory() { return mallinfo2().uordblks; }

    void LaunchToTheEnd(int times) {
        for (int launch = 0; launch < times; ++launch) {
            Launch("True");
            ASSERT_GT(ProcessOf("Jx300"), 0) << launch;
            ASSERT_TRUE(host->WaitForProcesses(std::chrono::seconds(30))) << launch;
            ASSERT_EQ(Sent().size(), 2u) << launch; // Tool_Load, Tool_UnLoad
            ForgetCalls();
        }
    }
};

} // namespace

TEST_F(ManyLaunches, LeaveNoProcessNoDescriptorAndNoMemoryBehind) {
    LoadSuite({{.name = "True", .vrex = "Jx300", .path = "/bin/true"}});
    while (waitpid(-1, nullptr, WNOHANG) > 0) {
    }                    // of other tests in this process
    LaunchToTheEnd(100); // what is kept ready is made by now
    const std::ptrdiff_t descriptors = OpenDescriptors();
    const std::size_t memory = UsedMemory();

    LaunchToTheEnd(Count());
    EXPECT_EQ(OpenDescriptors(), descriptors);
    EXPECT_LT(UsedMemory(), memory + 16384); // sixteen bytes a launch would be seen
    EXPECT_TRUE(Probe().Processes().IsEmpty());
    EXPECT_TRUE(host->Model().Processes().empty());
    EXPECT_LE(waitpid(-1, nullptr, WNOHANG), 0); // no dead child is left
}
