#include "console/LineSource.h"

#include <gmock/gmock.h>

#include <thread>

#include <unistd.h>

using namespace arvon::console;
using testing::ElementsAre;

namespace {

struct Pipe {
    Pipe() {
        int ends[2];
        if (pipe(ends) == 0) read = ends[0], write = ends[1];
    }
    ~Pipe() {
        close(read);
        CloseWrite();
    }
    void Put(std::string_view text) const {
        ASSERT_EQ(::write(write, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    void CloseWrite() {
        if (write >= 0) close(write);
        write = -1;
    }
    int read = -1, write = -1;
};

std::vector<std::string> LinesOf(std::string_view text) {
    Pipe input;
    std::thread writer([&] {
        while (!text.empty()) {
            const std::string_view piece = text.substr(0, 1000);
            input.Put(piece);
            text.remove_prefix(piece.size());
        }
        input.CloseWrite();
    });
    const auto source = LineSource::OfDescriptor(input.read, {});
    std::vector<std::string> lines;
    while (auto line = source->Next())
        lines.push_back(*line);
    writer.join();
    return lines;
}

} // namespace

TEST(LineSource, EndsLinesAtLfAndCrLf) {
    EXPECT_THAT(LinesOf("a\nb\r\n\nc\n"), ElementsAre("a", "b", "", "c"));
}

TEST(LineSource, NeedsNoEndOfTheLastLine) {
    EXPECT_THAT(LinesOf("a\nb"), ElementsAre("a", "b"));
    EXPECT_THAT(LinesOf("b\r"), ElementsAre("b"));
    EXPECT_THAT(LinesOf(""), ElementsAre());
}

TEST(LineSource, SkipsAByteOrderMarkAtTheStartOnly) {
    EXPECT_THAT(LinesOf("\xEF\xBB\xBFload\n\xEF\xBB\xBFx\n"), ElementsAre("load", "\xEF\xBB\xBFx"));
}

TEST(LineSource, KeepsNulBytes) {
    EXPECT_THAT(LinesOf(std::string_view("a\0b\n", 4)), ElementsAre(std::string("a\0b", 3)));
}

TEST(LineSource, ReadsLinesLongerThanAnyBuffer) {
    const std::string longLine(3 << 20, 'x');
    EXPECT_THAT(LinesOf(longLine + "\nb\n"), ElementsAre(longLine, "b"));
}

TEST(LineSource, ServesItsSideWatchWhileItWaits) {
    Pipe input, side;
    int served = 0;
    const auto source = LineSource::OfDescriptor(input.read, {side.read, [&] {
                                                                  if (served++ == 0)
                                                                      return; // before the line
                                                                  char byte;
                                                                  ASSERT_EQ(read(side.read, &byte, 1), 1);
                                                                  input.Put("late\n");
                                                              }});
    side.Put("!");
    EXPECT_EQ(source->Next(), "late");
    EXPECT_EQ(served, 2);
}

TEST(LineSource, ServesItsSideWatchBeforeEveryLine) {
    Pipe input;
    int served = 0;
    const auto source = LineSource::OfDescriptor(input.read, {-1, [&] { ++served; }});
    input.Put("a\nb\n");
    EXPECT_EQ(source->Next(), "a");
    EXPECT_EQ(served, 1);
    EXPECT_EQ(source->Next(), "b");
    EXPECT_EQ(served, 2);
}
