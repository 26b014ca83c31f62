#pragma once

// What the system's header has on macOS alone: how a connection stands, in the fields that the sources for macOS read.

#include_next <netinet/tcp.h>

#include <cstdint>

#define TCP_CONNECTION_INFO 0x106

struct tcp_connection_info {
    std::uint32_t tcpi_snd_sbbytes;
    std::uint64_t tcpi_txbytes;
    std::uint64_t tcpi_rxbytes;
};
