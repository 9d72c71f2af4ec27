#pragma once

#include "tests/support/ComponentFixture.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvtm::test {

/// A listener that keeps what it is sent and, when it is sent something, does as it is told.
class Subscriber final : public arvon::IMessageListener {
public:
    explicit Subscriber(std::string id) : id_(std::move(id)) {}
    std::string id() const override { return id_; }
    std::string ReceiveMessage(const MessageRef& message) override;

    std::vector<std::string> notices; // the options of every "NewOptions", in order
    std::function<void()> onNotice;

private:
    std::string id_;
};

/// The tool manager loaded on an options file.
class OptionsTest : public ComponentTest {
protected:
    static constexpr std::string_view file = "Arvon/OPTIONS.XML";

    /// `tools`: the content of "ToolOptions".
    static std::string Options(std::string_view tools);
    static std::string Option(std::string_view name, std::string_view value);
    static std::string Tool(std::string_view id, std::string_view options);
    /// The options that the order of the tools is read from at loading: without them, loading reports.
    static std::string SortOptions();

    /// Loads the tool manager on a file that holds these tools and the sort options. `profile`: 3 permits
    /// prices.
    void LoadWithTools(std::string_view tools, std::int32_t profile = 3);
    /// The same, the file's whole text given.
    void LoadWithFile(std::string_view text, std::int32_t profile = 3);
    std::shared_ptr<Subscriber> Subscribe(const std::string& id);
    std::shared_ptr<Subscriber> Register(const std::string& id); // without subscribing

    std::string Get(std::string_view tool, std::string_view name);
    std::string Set(std::string_view tool, std::string_view name, std::string_view value,
                    std::string_view addMissing = "False");
    /// The default printer in the options that tools are given.
    std::string DefaultPrinterHandedOut();
    std::string FileText() const { return installation.Read(file); }
    void ExpectNoRead(std::string_view tool, std::string_view name, std::string_view description);
};

} // namespace kvtm::test
