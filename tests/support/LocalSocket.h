#pragma once

#include <arpa/inet.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

/// A socket that listens on a free port of this machine, for this machine alone.
class LocalSocket {
public:
    LocalSocket() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const any = reinterpret_cast<sockaddr*>(&address);
        if (::bind(socket_, any, size) != 0 || ::listen(socket_, 16) != 0 ||
            ::getsockname(socket_, any, &size) != 0)
            throw std::runtime_error("cannot listen on this machine");
        port_ = ntohs(address.sin_port);
    }
    ~LocalSocket() { ::close(socket_); }
    LocalSocket(const LocalSocket&) = delete;
    LocalSocket& operator=(const LocalSocket&) = delete;

    int Descriptor() const { return socket_; }
    int Port() const { return port_; }

private:
    int socket_;
    int port_ = 0;
};
