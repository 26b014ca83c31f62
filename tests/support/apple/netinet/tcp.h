#pragma once

// The part of the system's header that only macOS has: the state of a connection, in the fields that the sources for
// macOS read.

#include_next <netinet/tcp.h>

#include <cstdint>

#define TCP_CONNECTION_INFO 0x106

struct tcp_connection_info {
    std::uint32_t tcpi_snd_sbbytes;
    std::uint64_t tcpi_txbytes;
    std::uint64_t tcpi_rxbytes;
};
