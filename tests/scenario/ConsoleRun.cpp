#include "tests/scenario/ConsoleRun.h"

#include "tests/support/TestProgram.h"

#include <sstream>

namespace fs = std::filesystem;

namespace scenario {

namespace {

std::string Short(const Json& line) {
    const std::string is = line.at("is");
    const auto text = [&](const char* member) { return line.at(member).get<std::string>(); };
    if (is == "message")
        return text("kind") + " " + (line.contains("name") ? text("name") : line.at("type").dump());
    if (is == "process") return "process " + text("change");
    if (is == "reply") return "reply " + text("text");
    if (is == "state") return "state " + text("of");
    if (is == "done" || is == "error") return is + " " + text("command");
    return is;
}

std::vector<std::string> TextsUnder(const std::vector<Json>& lines, const char* member) {
    std::vector<std::string> texts;
    for (const Json& line : lines)
        texts.push_back(line.at(member));
    return texts;
}

} // namespace

Transcript::Transcript(int exitStatus, std::string output, std::string errors)
    : exitStatus_(exitStatus), output_(std::move(output)), errors_(std::move(errors)) {
    std::istringstream stream(output_);
    for (std::string line; std::getline(stream, line);) {
        Json parsed = Json::parse(line, nullptr, false);
        if (!parsed.is_discarded()) lines_.push_back(std::move(parsed));
    }
}

std::vector<Json> Transcript::Of(std::string_view kind) const {
    std::vector<Json> found;
    for (const Json& line : lines_)
        if (line.at("is") == kind) found.push_back(line);
    return found;
}

std::vector<Json> Transcript::Messages(std::string_view name) const {
    std::vector<Json> found;
    for (const Json& line : Of("message"))
        if (line.contains("name") && line["name"] == name) found.push_back(line);
    return found;
}

std::vector<std::string> Transcript::Reports() const {
    std::vector<std::string> reports;
    for (const Json& message : Messages("ErrorMessage")) {
        const Json& parameters = message.at("parameters");
        reports.push_back(Find(parameters, "name", "ProcName").at("value").get<std::string>() + ": " +
                          Find(parameters, "name", "ErrorDescription").at("value").get<std::string>());
    }
    return reports;
}

std::vector<std::string> Transcript::Replies() const {
    return TextsUnder(Of("reply"), "text");
}

std::vector<std::string> Transcript::Errors() const {
    return TextsUnder(Of("error"), "text");
}

std::vector<std::string> Transcript::Boxes() const {
    return TextsUnder(Of("messageBox"), "text");
}

Json Transcript::State(std::string_view what) const {
    Json value;
    for (const Json& line : Of("state"))
        if (line.at("of") == what) value = line.at("value");
    return value;
}

std::vector<std::string> Transcript::Story() const {
    std::vector<std::string> story;
    for (const Json& line : lines_)
        if (line.at("is") != "call") story.push_back(Short(line));
    return story;
}

std::vector<std::string> Column(const Json& entries, std::string_view member) {
    std::vector<std::string> texts;
    for (const Json& entry : entries) {
        const Json& value = entry.at(std::string(member));
        texts.push_back(value.is_string() ? value.get<std::string>() : value.dump());
    }
    return texts;
}

Json Find(const Json& entries, std::string_view member, std::string_view value) {
    for (const Json& entry : entries)
        if (entry.at(std::string(member)) == value) return entry;
    return nullptr;
}

Scenario::Scenario() : suite(folder / "suite") {
    fs::copy(SampleSuite(), suite, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
}

Transcript Scenario::Run(std::string_view script) const {
    return RunConsole({"--json", "--suite", suite}, script);
}

Transcript Scenario::RunConsole(const std::vector<std::string>& arguments, std::string_view input) {
    const TestFolder streams;
    streams.Write("in", input);
    std::vector<std::string> commandLine{Console()};
    commandLine.insert(commandLine.end(), arguments.begin(), arguments.end());
    const int status =
        WaitForEnd(StartProgram(commandLine, {streams / "in", streams / "out", streams / "err"}));
    return {status, streams.Read("out"), streams.Read("err")};
}

fs::path Scenario::Console() {
    return ARVON_CONSOLE;
}

fs::path Scenario::SampleSuite() {
    return ARVON_SUITE;
}

void Scenario::Write(std::string_view path, std::string_view content) const {
    WriteWholeFile(File(path), content);
}

std::string Scenario::Read(std::string_view path) const {
    return ReadWholeFile(File(path));
}

} // namespace scenario
