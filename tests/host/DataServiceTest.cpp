#include "tests/host/HostFixture.h"

namespace arvon::host::test {
namespace {

class DataService : public HostTest {
protected:
    struct Answer {
        bool came = false;
        std::string data;
        friend bool operator==(const Answer&, const Answer&) = default;
    };
    Answer Ask(std::string_view path, std::string_view query) {
        const auto request = Framework().Messaging()->CreateRequest("Data Service", "getXMLData", "KvTM10");
        request->AddParameter("vrex", "SOV02");
        request->AddParameter("path", path);
        request->AddParameter("query", query);
        const bool came = request->Send();
        return {came, request->Data()};
    }
    static constexpr std::string_view file = "C:\\QUARRA\\Arvon\\Data.xml";
    void Write(std::string_view xml) { installation.Write("Arvon/Data.xml", xml); }
};

TEST_F(DataService, AnswersTheNodesThatTheQuerySelectsInDocumentOrder) {
    Write("<R><T ID=\"1\"><N>a</N></T><U/><T ID=\"2\"><N>b &amp; c</N></T></R>");
    EXPECT_EQ(Ask(file, "/R/T[@ID='1']"), (Answer{true, "<T ID=\"1\"><N>a</N></T>"}));
    EXPECT_EQ(Ask(file, "//N"), (Answer{true, "<N>a</N><N>b &amp; c</N>"}));
    EXPECT_EQ(Ask(file, "//T/@ID"), (Answer{true, "12"}));
}

TEST_F(DataService, AnswersTheWholeDocumentWithoutAQuery) {
    Write("<R><T/></R>");
    EXPECT_EQ(Ask(file, ""), (Answer{true, "<R><T/></R>"}));
}

TEST_F(DataService, AnswersEmptyTextWhenNothingIsSelected) {
    Write("<R/>");
    EXPECT_EQ(Ask(file, "//Nothing"), (Answer{true, ""}));
}

TEST_F(DataService, FindsTheFileAsTheInstallationNamesIt) {
    Write("<R/>");
    EXPECT_EQ(Ask("c:\\quarra\\ARVON\\data.XML", ""), (Answer{true, "<R/>"}));
    EXPECT_EQ(Ask(installation.File("Arvon/Data.xml").string(), ""), (Answer{true, "<R/>"}));
    std::filesystem::create_directory(installation.Folder() / "drive_d");
    std::filesystem::copy_file(installation.File("Arvon/Data.xml"),
                               installation.Folder() / "drive_d" / "Data.xml");
    EXPECT_EQ(Ask("D:\\Data.xml", ""), (Answer{true, "<R/>"}));
}

TEST_F(DataService, DoesNotReplyForAFileThatCannotBeRead) {
    Write("<R><T></R>");
    for (const auto& path : {std::string(file), std::string("C:\\QUARRA\\None.xml"), std::string("Q:\\x.xml"),
                             std::string("C:\\QUARRA\\Arvon"), std::string()}) {
        recorder.Forget();
        EXPECT_EQ(Ask(path, ""), (Answer{false, ""})) << path;
        ASSERT_EQ(recorder.problems.size(), 1u) << path;
        EXPECT_THAT(recorder.problems[0], testing::StartsWith("Data Service: "));
    }
}

TEST_F(DataService, DoesNotReplyForAQueryThatCannotBeEvaluated) {
    Write("<R/>");
    for (const auto* query : {"//T[", "1 + 1", "unknown()", "$x"})
        EXPECT_EQ(Ask(file, query), (Answer{false, ""})) << query;
}

TEST_F(DataService, ForgetsTheLastReplyBeforeTheNextIsAsked) {
    Write("<R/>");
    const auto request = Framework().Messaging()->CreateRequest("Data Service", "getXMLData", "KvTM10");
    EXPECT_EQ(request->Data(), "");
    request->AddParameter("path", file);
    EXPECT_TRUE(request->Send());
    EXPECT_EQ(request->Data(), "<R/>");
    request->AddParameter("path", "C:\\None.xml"); // instead of the first
    EXPECT_FALSE(request->Send());
    EXPECT_EQ(request->Data(), "");
}

TEST_F(DataService, ReadsTheFileAnewForEveryRequest) {
    Write("<R/>");
    Ask(file, "");
    Write("<S/>");
    EXPECT_EQ(Ask(file, ""), (Answer{true, "<S/>"}));
}

TEST_F(DataService, IsTheOnlyServiceAndHasOneRequest) {
    const auto messaging = Framework().Messaging();
    EXPECT_EQ(messaging->CreateRequest("Mail Service", "getXMLData", "KvTM10"), nullptr);
    EXPECT_EQ(messaging->CreateRequest("Data Service", "getxmldata", "KvTM10"), nullptr);
    EXPECT_EQ(messaging->CreateRequest("", "", ""), nullptr);
}

TEST_F(DataService, IsRecordedWithWhatWasAsked) {
    Write("<R/>");
    Host();
    recorder.Forget();
    Ask(file, "/R");
    EXPECT_THAT(recorder.calls,
                ElementsAre("Messaging.CreateRequest(\"Data Service\", \"getXMLData\", \"KvTM10\")",
                            "DataService.AddParameter(\"vrex\", \"SOV02\")",
                            "DataService.AddParameter(\"path\", \"C:\\QUARRA\\Arvon\\Data.xml\")",
                            "DataService.AddParameter(\"query\", \"/R\")",
                            "DataService.Send(\"C:\\QUARRA\\Arvon\\Data.xml\", \"/R\")"));
}

} // namespace
} // namespace arvon::host::test
