#pragma once

#include "tests/support/LocalSocket.h"

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// A printing server on this machine's own address that behaves as a test wants. CUPS is told of it by
/// CUPS_SERVER for the object's life.
class PrinterServer {
public:
    enum class Manner {
        Silent,    // accepts and never answers
        Dribbling, // answers one byte of an endless head every now and then
        Closing,   // closes at once
        Garbage,   // answers what is no HTTP
        Refusing,  // answers every question with an error of the printing protocol
        Serving    // answers with its printers
    };
    explicit PrinterServer(Manner manner, std::vector<std::string> printers = {},
                           std::string defaultName = {});
    ~PrinterServer();
    PrinterServer(const PrinterServer&) = delete;
    PrinterServer& operator=(const PrinterServer&) = delete;

    int Port() const { return listener_.Port(); }
    int Connections() const { return connections_; }

private:
    void Run();
    void Serve(int connection);
    void AnswerQuestions(int connection);
    std::string Reply(int operation, int requestId, const std::string& question) const;

    Manner manner_;
    std::vector<std::string> printers_;
    std::string defaultName_;
    LocalSocket listener_;
    std::atomic<int> connections_ = 0;
    std::atomic<bool> isEnding_ = false;
    std::vector<std::thread> serving_;
    std::thread accepting_;
};
