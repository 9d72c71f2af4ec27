#pragma once

#include "tests/support/TestFolder.h"
#include "tests/support/TestVariable.h"

#include <filesystem>
#include <list>
#include <string>
#include <sys/types.h>
#include <vector>

namespace kvtm::test {

/// A real CUPS server of the test's own, with real queues whose jobs go nowhere: its own configuration and
/// spool in a temporary folder, reached through a socket there, which CUPS_SERVER names while the object
/// lives. It ends with the object, and with the test's process however that ends. Throws, saying what is
/// missing, when it cannot be started.
class CupsServer {
public:
    explicit CupsServer(std::vector<std::string> queues, std::string defaultQueue = {});
    ~CupsServer();
    CupsServer(const CupsServer&) = delete;
    CupsServer& operator=(const CupsServer&) = delete;

    void Stop();
    /// Accepts connections from now on and answers none.
    void Hang();
    void Resume();

private:
    void WriteConfiguration(const std::vector<std::string>& queues, const std::string& defaultQueue) const;
    void Start();
    void WaitUntilItAnswers();
    std::filesystem::path Socket() const { return folder_ / "socket"; }
    std::string Log() const;

    TestFolder folder_;
    pid_t process_ = 0;
    std::list<TestVariable> environment_;
};

} // namespace kvtm::test
