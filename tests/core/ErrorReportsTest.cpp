#include "tests/support/ComponentFixture.h"

namespace kvtm::test {

class ErrorReports : public ComponentTest {
protected:
    void SetUp() override { LoadWith({}); }
};

TEST_F(ErrorReports, TellDescriptionSourceNumberAndProcedure) {
    Probe().ReportError({1234, "the source", "what \xc3\xa4 went <wrong>"}, Probe().Name() + ".Somewhere");
    const Report report = ClaimReport("Somewhere");
    EXPECT_EQ(report.number, 1234);
    EXPECT_EQ(report.source, "the source");
    EXPECT_EQ(report.description, "what \xc3\xa4 went <wrong>");
}

TEST_F(ErrorReports, AreNotSentForTheNumberZero) {
    Probe().ReportError({0, "the source", "nothing"}, "Somewhere");
    EXPECT_TRUE(Calls().empty());
}

TEST_F(ErrorReports, AskNobodyWhetherTheShellListens) {
    Probe().ReportError({1, "s", "d"}, Probe().Name() + ".X");
    EXPECT_TRUE(CallsOf("Router.IsRegistered").empty());
    ClaimReport("X");
}

TEST_F(ErrorReports, AreNotGuardedThemselves) {
    host->FailNext("Router.Send");
    EXPECT_THROW(Probe().ReportError({1, "s", "d"}, "X"), base::ComponentError);
}

TEST_F(ErrorReports, RecordBenchmarksInTheGivenOrder) {
    tool->AddBenchmark("Load", 12.5, "toolmain", "");
    tool->AddBenchmark("Save", 3, "t", "<P>1</P>");
    const auto texts = host->Benchmarks();
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[0], "<BENCHMARK><OBJECT>TOOLMAIN</OBJECT><METHOD>Load</METHOD>"
                        "<LENGTH_IN_CALL>12.5</LENGTH_IN_CALL></BENCHMARK>");
    EXPECT_EQ(texts[1], "<BENCHMARK><OBJECT>T</OBJECT><METHOD>Save</METHOD><P>1</P>"
                        "<LENGTH_IN_CALL>3</LENGTH_IN_CALL></BENCHMARK>");
}

} // namespace kvtm::test
