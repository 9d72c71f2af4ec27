#pragma once

#include "console/Runs.h"
#include "console/Writer.h"
#include "host/ReferenceHost.h"

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace arvon::console {

class LineSource;
class RecordEdits;

/// Carries out commands on a host and writes what comes of them.
class Console {
public:
    using Words = std::span<const std::string>;

    /// `library`: KvTM10, opened by the first `load`. `edits`: what the host asks for its records to be
    /// edited. Subscribes the writer to the host for its own lifetime.
    Console(host::ReferenceHost& host, Writer& writer, RecordEdits& edits, std::filesystem::path library);
    ~Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    /// Every line until `quit` or the end. True when every command was understood and carried out.
    /// `isTyped`: whoever gave the lines sees them already.
    bool Run(LineSource& lines, bool isTyped);

    // Commands: one member each, given the words after the command's name, as many as the table asks for.
    // They throw what kept them from being carried out.
    void Load(Words words);
    void Unload(Words words);
    void TaskPermission(Words words);
    void Request(Words words);
    void Event(Words words);
    void Message(Words words);
    void Menu(Words words);
    void Button(Words words);
    void Task(Words words);
    void Node(Words words);
    void Tab(Words words);
    void Item(Words words);
    void Column(Words words);
    void Close(Words words);
    void UnloadTool(Words words);
    void Edit(Words words);
    void Listen(Words words);
    void Unlisten(Words words);
    void Language(Words words);
    void Refuse(Words words);
    void Fail(Words words);
    void Wait(Words words);
    void Show(Words words);
    void Help(Words words);
    void Quit(Words words);

private:
    void Execute(std::string_view line);
    void CarryOut(Words words);
    void RefuseCommand(std::string_view text);
    void RequireComponent() const;
    void Reply(std::string_view text);

    host::ReferenceHost& host_;
    Writer& writer_;
    RecordEdits& edits_;
    Runs runs_;
    const std::filesystem::path library_;
    std::string command_; // under way
    bool allCarriedOut_ = true;
    bool quit_ = false;
};

} // namespace arvon::console
