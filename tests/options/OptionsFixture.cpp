#include "tests/options/OptionsFixture.h"

#include "base/XmlDocument.h"
#include "core/Names.h"
#include "core/Parameters.h"

#include <gmock/gmock.h>

namespace kvtm::test {

std::string Subscriber::ReceiveMessage(const MessageRef& message) {
    base::XmlDocument request;
    request.LoadText(message->Body().ToText());
    EXPECT_EQ(request.Root().Attribute("Type"), request::NewOptions);
    notices.push_back(request.SelectSingle("//Parameter[@Name='Options']").Text());
    if (onNotice) onNotice();
    return {};
}

std::string OptionsTest::Options(std::string_view tools) {
    return "<Options><ToolOptions>" + std::string(tools) + "</ToolOptions></Options>";
}

std::string OptionsTest::Option(std::string_view name, std::string_view value) {
    const std::string text(value);
    return "<Option><Name>" + std::string(name) + "</Name>" +
           (text.empty() ? "<Value/>" : "<Value>" + text + "</Value>") + "</Option>";
}

std::string OptionsTest::Tool(std::string_view id, std::string_view options) {
    return "<Tool ID=\"" + std::string(id) + "\">" + std::string(options) + "</Tool>";
}

std::string OptionsTest::SortOptions() {
    return Tool("SOV02", Option("cmbToolSortKey", "") + Option("optToolSortOrder", ""));
}

void OptionsTest::LoadWithTools(std::string_view tools, std::int32_t profile) {
    LoadWithFile(Options(SortOptions() + std::string(tools)), profile);
}

void OptionsTest::LoadWithFile(std::string_view text, std::int32_t profile) {
    installation.Write(file, text);
    CreateHost();
    host->SetProfileId(base::Value(profile));
    CreateTool();
    ASSERT_TRUE(Load());
    ForgetCalls();
}

std::shared_ptr<Subscriber> OptionsTest::Register(const std::string& id) {
    auto subscriber = std::make_shared<Subscriber>(id);
    host->Framework()->RegisterListener(subscriber, id);
    return subscriber;
}

std::shared_ptr<Subscriber> OptionsTest::Subscribe(const std::string& id) {
    tool->AddSubscriber(id);
    return Register(id);
}

std::string OptionsTest::Get(std::string_view toolId, std::string_view name) {
    return Request(request::GetOptionValue, {{"ToolID", toolId}, {"OptionName", name}});
}

std::string OptionsTest::Set(std::string_view toolId, std::string_view name, std::string_view value,
                             std::string_view addMissing) {
    return Request(
        request::SetOptionValue,
        {{"ToolID", toolId}, {"OptionName", name}, {"OptionValue", value}, {"AddMissing", addMissing}});
}

std::string OptionsTest::DefaultPrinterHandedOut() {
    base::XmlDocument document;
    document.LoadText(Probe().getOptionData(""));
    return document.SelectSingle("//Option[Name='cmbDefaultPrinter']/Value").Text();
}

void OptionsTest::ExpectNoRead(std::string_view toolId, std::string_view name, std::string_view description) {
    EXPECT_EQ(Get(toolId, name), "False");
    EXPECT_THAT(ClaimReport("GetOptionValue").description, testing::HasSubstr(std::string(description)));
}

} // namespace kvtm::test
