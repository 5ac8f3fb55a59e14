#pragma once

#include <functional>
#include <memory>
#include <string>

#include "tools/tune/TuneService.h"

namespace kvx::tool {

/**
 * The page and its requests over HTTP, on the loopback address only. Every address starts with a random token; requests
 * for another host, from another origin or without the token are refused, so that other pages and users cannot ask.
 */
class TuneServer {
public:
    /**
     * Starts to listen. Throws ExitCode::Usage if the port is taken.
     * @param port 0: any that is free
     * @param quit called, from a thread of the server, when the page asks to end
     */
    TuneServer(TuneService& service, uint16_t port, std::function<void()> quit);
    /** Stops, after requests that are being answered. */
    ~TuneServer();
    TuneServer(const TuneServer&) = delete;
    TuneServer& operator=(const TuneServer&) = delete;

    /** http://127.0.0.1:PORT/TOKEN/ */
    std::string Address() const;

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace kvx::tool
