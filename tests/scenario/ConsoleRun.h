#pragma once

#include "tests/support/TestFolder.h"
#include "tests/support/TestVariable.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace scenario {

using Json = nlohmann::ordered_json;

/// What one run of arvon-console printed, and how it ended.
class Transcript {
public:
    Transcript(int exitStatus, std::string output, std::string errors);

    int ExitStatus() const { return exitStatus_; }
    const std::string& Output() const { return output_; }
    const std::string& StandardError() const { return errors_; }
    const std::vector<Json>& Lines() const { return lines_; }

    /// The lines of a kind ("call", "message", "error", ...).
    std::vector<Json> Of(std::string_view kind) const;
    /// The messages of a request type or event name.
    std::vector<Json> Messages(std::string_view name) const;
    /// The event "ErrorMessage", each as "procedure: description".
    std::vector<std::string> Reports() const;
    /// The replies of commands, and the texts of errors, in order.
    std::vector<std::string> Replies() const;
    std::vector<std::string> Errors() const;
    std::vector<std::string> Boxes() const;
    /// The last state printed of this part; null when there is none.
    Json State(std::string_view what) const;
    /// Every line but the calls, in short: "request LaunchTool", "event Tool_Load", "process started", "reply
    /// True", "done request", "error menu".
    std::vector<std::string> Story() const;

private:
    int exitStatus_;
    std::string output_, errors_;
    std::vector<Json> lines_;
};

/// The values of a member of every entry: what a table column holds.
std::vector<std::string> Column(const Json& entries, std::string_view member);
/// The entry whose member has this value; null when there is none.
Json Find(const Json& entries, std::string_view member, std::string_view value);

/// A test that runs arvon-console on a copy of the sample suite of its own.
class Scenario : public testing::Test {
protected:
    Scenario();

    /// Runs a script with --json on this test's suite.
    Transcript Run(std::string_view script) const;
    /// Runs arvon-console with these arguments and this standard input.
    static Transcript RunConsole(const std::vector<std::string>& arguments, std::string_view input = {});
    static std::filesystem::path Console();
    static std::filesystem::path SampleSuite();

    /// A file of the suite, by its path below it, for writing and reading.
    std::filesystem::path File(std::string_view path) const { return suite / path; }
    void Write(std::string_view path, std::string_view content) const;
    std::string Read(std::string_view path) const;

    const TestFolder folder;           // of this test alone
    const std::filesystem::path suite; // in it

private:
    WithoutDisplay withoutDisplay_;
};

} // namespace scenario
