#include "tests/scenario/ConsoleRun.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace scenario {

namespace {

std::string ReadWhole(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error("cannot read " + file.string());
    return {std::istreambuf_iterator<char>(stream), {}};
}

void WriteWhole(const fs::path& file, std::string_view content) {
    std::ofstream stream(file, std::ios::binary);
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
    if (!stream.flush()) throw std::runtime_error("cannot write " + file.string());
}

fs::path NewFolder() {
    std::string name = fs::temp_directory_path() / "scenario-XXXXXX";
    if (!mkdtemp(name.data())) throw std::runtime_error("no folder for the scenario");
    return name;
}

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

std::vector<std::string> Texts(const std::vector<Json>& lines, const char* member) {
    std::vector<std::string> texts;
    for (const Json& line : lines)
        texts.push_back(line.at(member));
    return texts;
}

/// Runs a program with its standard streams on files; the exit status, or 128 and the signal's number.
int RunOnFiles(const std::vector<std::string>& commandLine, const fs::path& in, const fs::path& out,
               const fs::path& err) {
    std::vector<char*> arguments;
    for (const std::string& word : commandLine)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);

    constexpr int writing = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, in.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out.c_str(), writing, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, err.c_str(), writing, 0600);
    pid_t child = 0;
    const int failure = posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) throw std::runtime_error("cannot start " + commandLine.front());
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
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
    return Texts(Of("reply"), "text");
}

std::vector<std::string> Transcript::Errors() const {
    return Texts(Of("error"), "text");
}

std::vector<std::string> Transcript::Boxes() const {
    return Texts(Of("messageBox"), "text");
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

Scenario::Scenario() : folder(NewFolder()), suite(folder / "suite") {
    fs::copy(SampleSuite(), suite, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
}

Scenario::~Scenario() {
    std::error_code ignored;
    fs::remove_all(folder, ignored);
}

Transcript Scenario::Run(std::string_view script) const {
    return RunConsole({"--json", "--suite", suite}, script);
}

Transcript Scenario::RunConsole(const std::vector<std::string>& arguments, std::string_view input) {
    const fs::path streams = NewFolder();
    WriteWhole(streams / "in", input);
    std::vector<std::string> commandLine{Console()};
    commandLine.insert(commandLine.end(), arguments.begin(), arguments.end());
    const int status = RunOnFiles(commandLine, streams / "in", streams / "out", streams / "err");
    Transcript transcript(status, ReadWhole(streams / "out"), ReadWhole(streams / "err"));
    fs::remove_all(streams);
    return transcript;
}

fs::path Scenario::Console() {
    return ARVON_CONSOLE;
}

fs::path Scenario::SampleSuite() {
    return ARVON_SUITE;
}

void Scenario::Write(std::string_view path, std::string_view content) const {
    WriteWhole(File(path), content);
}

std::string Scenario::Read(std::string_view path) const {
    return ReadWhole(File(path));
}

} // namespace scenario
