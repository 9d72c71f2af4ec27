#include "tests/platform/PrinterServer.h"

#include <array>
#include <chrono>
#include <cups/cups.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds Step{20};

/// Takes what arrives within a step; false when the other side has closed.
bool Receive(int connection, std::string& received) {
    pollfd wait{connection, POLLIN, 0};
    if (::poll(&wait, 1, static_cast<int>(Step.count())) <= 0) return true;
    std::array<char, 4096> room{};
    const ssize_t count = ::recv(connection, room.data(), room.size(), 0);
    if (count <= 0) return false;
    received.append(room.data(), static_cast<std::size_t>(count));
    return true;
}

void Send(int connection, const std::string& text) {
    if (::send(connection, text.data(), text.size(), MSG_NOSIGNAL) < 0) return;
}

ssize_t Append(void* target, ipp_uchar_t* bytes, size_t size) {
    static_cast<std::string*>(target)->append(reinterpret_cast<const char*>(bytes), size);
    return static_cast<ssize_t>(size);
}

/// The length of a whole question at the start of what was received, its body's offset included; 0 when there
/// is more to come.
std::size_t QuestionLength(const std::string& received, std::size_t& body) {
    const std::size_t head = received.find("\r\n\r\n");
    if (head == std::string::npos) return 0;
    body = head + 4;
    const std::size_t length = received.find("Content-Length: ");
    if (length == std::string::npos || length > head)
        throw std::runtime_error("a question without its length");
    const std::size_t total = body + std::stoul(received.substr(length + 16));
    return received.size() >= total ? total : 0;
}

} // namespace

PrinterServer::PrinterServer(Manner manner, std::vector<std::string> printers, std::string defaultName)
    : manner_(manner), printers_(std::move(printers)), defaultName_(std::move(defaultName)) {
    accepting_ = std::thread([this] { Run(); });
}

PrinterServer::~PrinterServer() {
    isEnding_ = true;
    accepting_.join();
    for (std::thread& thread : serving_)
        thread.join();
}

void PrinterServer::Run() {
    while (!isEnding_) {
        pollfd wait{listener_.Descriptor(), POLLIN, 0};
        if (::poll(&wait, 1, static_cast<int>(Step.count())) <= 0) continue;
        const int connection = ::accept4(listener_.Descriptor(), nullptr, nullptr, SOCK_CLOEXEC);
        if (connection < 0) continue;
        ++connections_;
        serving_.emplace_back([this, connection] {
            Serve(connection);
            ::close(connection);
        });
    }
}

void PrinterServer::Serve(int connection) {
    if (manner_ == Manner::Closing) return;
    if (manner_ == Manner::Serving || manner_ == Manner::Refusing) return AnswerQuestions(connection);
    if (manner_ == Manner::Dribbling) Send(connection, "HTTP/1.1 200 OK\r\nX: ");
    std::string received;
    bool isThere = true;
    while (!isEnding_ && isThere) {
        isThere = Receive(connection, received);
        if (manner_ == Manner::Dribbling) Send(connection, "x");
        if (manner_ == Manner::Garbage) Send(connection, std::string(200, '\xFF') + "\r\n\r\n");
    }
}

void PrinterServer::AnswerQuestions(int connection) {
    std::string received;
    while (!isEnding_ && Receive(connection, received)) {
        std::size_t body = 0;
        if (received.find("100-continue") != std::string::npos && received.ends_with("\r\n\r\n"))
            Send(connection, "HTTP/1.1 100 Continue\r\n\r\n");
        while (const std::size_t total = QuestionLength(received, body)) {
            const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(received[body + at]); };
            const std::string reply =
                Reply(byte(2) << 8 | byte(3), byte(4) << 24 | byte(5) << 16 | byte(6) << 8 | byte(7),
                      received.substr(body, total - body));
            Send(connection, "HTTP/1.1 200 OK\r\nContent-Type: application/ipp\r\nContent-Length: " +
                                 std::to_string(reply.size()) + "\r\n\r\n" + reply);
            received.erase(0, total);
        }
    }
}

std::string PrinterServer::Reply(int operation, int requestId, const std::string& question) const {
    ipp_t* reply = ::ippNew();
    ::ippSetVersion(reply, 2, 0);
    ::ippSetRequestId(reply, requestId);
    ::ippSetStatusCode(reply, IPP_STATUS_OK);
    ::ippAddString(reply, IPP_TAG_OPERATION, IPP_TAG_CHARSET, "attributes-charset", nullptr, "utf-8");
    ::ippAddString(reply, IPP_TAG_OPERATION, IPP_TAG_LANGUAGE, "attributes-natural-language", nullptr, "en");
    std::vector<std::string> names;
    if (operation == IPP_OP_CUPS_GET_PRINTERS) names = printers_;
    if (operation == IPP_OP_CUPS_GET_DEFAULT && !defaultName_.empty()) names = {defaultName_};
    if (operation == IPP_OP_GET_PRINTER_ATTRIBUTES)
        for (const std::string& name : printers_)
            if (question.find("/printers/" + name) != std::string::npos) names = {name};
    if (manner_ == Manner::Refusing)
        ::ippSetStatusCode(reply, IPP_STATUS_ERROR_INTERNAL);
    else if (names.empty())
        ::ippSetStatusCode(reply, IPP_STATUS_ERROR_NOT_FOUND);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i > 0) ::ippAddSeparator(reply);
        const std::string place = "ipp://localhost/printers/" + std::to_string(i);
        ::ippAddString(reply, IPP_TAG_PRINTER, IPP_TAG_NAME, "printer-name", nullptr, names[i].c_str());
        ::ippAddString(reply, IPP_TAG_PRINTER, IPP_TAG_URI, "printer-uri-supported", nullptr, place.c_str());
        ::ippAddInteger(reply, IPP_TAG_PRINTER, IPP_TAG_ENUM, "printer-type", 0);
    }
    std::string bytes;
    ::ippSetState(reply, IPP_STATE_IDLE);
    while (::ippWriteIO(&bytes, Append, 1, nullptr, reply) == IPP_STATE_ATTRIBUTE) {
    }
    ::ippDelete(reply);
    return bytes;
}
