#include "tests/scenario/ConsoleRun.h"

#include <filesystem>

namespace scenario {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// What is damaged, missing or made to fail: one clear report, and the next request works.
class HostileInput : public Scenario {
protected:
    static std::string Nested(std::size_t levels) {
        std::string text;
        for (std::size_t i = 0; i < levels; ++i)
            text += "<a>";
        return text;
    }
};

TEST_F(HostileInput, GetsAnEmptyReplyAndOneReportAsAMessage) {
    for (const std::string& body : {std::string("\"no xml\""), std::string("\"<Request Type='A'>\""),
                                    "\"" + Nested(5000) + "\"", std::string("\"<Other/>\"")}) {
        const Transcript run = Run("load\nmessage 2 " + body + "\nrequest GetResourcePath\n");
        EXPECT_EQ(run.ExitStatus(), 0);
        EXPECT_THAT(run.Replies(), ElementsAre("True", "", "C:\\QUARRA\\Arvon\\resources\\1033"));
        EXPECT_THAT(run.Reports(), ElementsAre(HasSubstr("IMessageListener_ReceiveMessage")))
            << body.substr(0, 40);
    }
}

TEST_F(HostileInput, LeavesAnEmptyListForABrokenCatalogue) {
    Write("drive_c/QUARRA/Arvon/Tools.xml", "<Tools>\n<Tool Name='A'\n");
    const Transcript run = Run("load\nshow list\nrequest LoadedVantors\n");
    EXPECT_THAT(run.State("list"), IsEmpty());
    EXPECT_EQ(run.Replies().front(), "True");
}

TEST_F(HostileInput, ShowsWhyTheComponentDidNotLoadWithoutARegistry) {
    Write("registry.reg", "no registry at all\n");
    const Transcript run = Run("load\n");
    EXPECT_EQ(run.ExitStatus(), 1);
    ASSERT_THAT(run.Errors(), SizeIs(1));
    EXPECT_THAT(run.Errors().front(), HasSubstr("registry.reg"));
}

TEST_F(HostileInput, LeavesTheTextsEmptyForADamagedStringModule) {
    Write("drive_c/QUARRA/Arvon/resources/1033/Tools.dll", "MZ damaged");
    const Transcript run = Run("load\nshow columns\n");
    EXPECT_EQ(run.Replies().front(), "True");
    EXPECT_THAT(Column(run.State("columns"), "caption"), ElementsAre("", "", "", ""));
}

TEST_F(HostileInput, EndsWithOneLineForAMissingSuite) {
    const Transcript run = RunConsole({"--suite", (folder / "nowhere").string()}, "load\n");
    EXPECT_EQ(run.ExitStatus(), 2);
    EXPECT_EQ(run.Output(), "");
    const std::string errors = run.StandardError();
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
    EXPECT_THAT(errors, HasSubstr("nowhere"));
}

TEST_F(HostileInput, CountsAnUnknownCommandAndGoesOn) {
    const Transcript run = Run("frobnicate\nload\n");
    EXPECT_EQ(run.ExitStatus(), 1);
    EXPECT_THAT(run.Errors(), SizeIs(1));
    EXPECT_THAT(run.Replies(), Contains("True"));
}

TEST_F(HostileInput, ReportsAHostThatFailsAndWorksAgain) {
    const Transcript run = Run("load\nfail NewRequest\nrequest LoadedVantors\nrequest GetResourcePath\n");
    EXPECT_THAT(run.Reports(), ElementsAre(HasSubstr("NewRequest failed")));
    EXPECT_EQ(run.Replies().back(), "C:\\QUARRA\\Arvon\\resources\\1033");
}

} // namespace scenario
