#include "tools/tune/TuneServer.h"

#include <httplib.h>
#include <sys/random.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <thread>

#include "tools/tune/PageFiles.h"

namespace kvx::tool {
namespace {

constexpr const char* kHost = "127.0.0.1";
constexpr size_t kMostBytes = 1 << 16;  // of the body of a request
/** Clients that hang keep a thread until the time to read is over. */
constexpr size_t kThreads = 64;
constexpr time_t kSecondsToRead = 2;

std::string RandomToken() {
    std::array<unsigned char, 16> bytes{};
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        Fail(ExitCode::Unexpected, "no random numbers: {}", std::strerror(errno));
    }
    return fmt::format("{:02x}", fmt::join(bytes, ""));
}

/** The same time for every wrong token. */
bool IsEqual(std::string_view a, std::string_view b) {
    unsigned char difference = a.size() == b.size() ? 0 : 1;
    for (size_t i = 0; i < std::min(a.size(), b.size()); ++i) difference |= static_cast<unsigned char>(a[i] ^ b[i]);
    return difference == 0;
}

const httplib::Headers& SafetyHeaders() {
    static const httplib::Headers headers = {
        {"Content-Security-Policy",
         "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; img-src 'self' data:; "
         "base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
        {"X-Content-Type-Options", "nosniff"},
        {"Referrer-Policy", "no-referrer"},
        {"Cross-Origin-Resource-Policy", "same-origin"},
        {"Cross-Origin-Opener-Policy", "same-origin"},
        {"Cache-Control", "no-store"}};
    return headers;
}

/** The library lets 5 connections wait, and more of them try again after a second. */
class PatientServer : public httplib::Server {
public:
    void LetManyWait() {
        ::listen(svr_sock_, SOMAXCONN);
    }
};

}  // namespace

class TuneServer::Impl {
public:
    Impl(TuneService& service, uint16_t port, std::function<void()> quit)
        : m_service(service), m_quit(std::move(quit)), m_token(RandomToken()) {
        m_server.new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
        m_server.set_payload_max_length(kMostBytes);
        m_server.set_read_timeout(kSecondsToRead);
        m_server.set_write_timeout(kSecondsToRead);
        m_server.set_keep_alive_timeout(1);  // ending waits for it
        m_server.set_keep_alive_max_count(SIZE_MAX);
        m_server.set_tcp_nodelay(true);
        m_server.set_default_headers(SafetyHeaders());
        // Without SO_REUSEPORT, which would let another program take the port, too.
        m_server.set_socket_options([](int socket) {
            const int yes = 1;
            ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
        });
        m_server.set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
            if (IsAllowed(request)) return httplib::Server::HandlerResponse::Unhandled;
            response.status = 403;
            return httplib::Server::HandlerResponse::Handled;
        });
        const auto answer = [this](const httplib::Request& request, httplib::Response& response) {
            Answer(request, response);
        };
        m_server.Get("/.*", answer);
        m_server.Post("/.*", answer);
        m_port = port == 0 ? m_server.bind_to_any_port(kHost) : m_server.bind_to_port(kHost, port) ? port : -1;
        if (m_port < 0) Fail(ExitCode::Usage, "--port {}: is taken: give another one, or none", port);
        m_server.LetManyWait();
        m_thread = std::thread([this] { m_server.listen_after_bind(); });
    }

    ~Impl() {
        // Stopping before it listens would have no effect.
        while (!m_server.is_running()) std::this_thread::yield();
        m_server.stop();
        m_thread.join();
    }

    std::string Address() const {
        return fmt::format("http://{}:{}/{}/", kHost, m_port, m_token);
    }

private:
    bool IsAllowed(const httplib::Request& request) const {
        const std::string host = request.get_header_value("Host");
        const bool isOwnHost =
            host == fmt::format("{}:{}", kHost, m_port) || host == fmt::format("localhost:{}", m_port);
        const bool isOwnOrigin =
            !request.has_header("Origin") || request.get_header_value("Origin") == "http://" + host;
        const size_t end = request.path.find('/', 1);
        return isOwnHost && isOwnOrigin && end != std::string::npos &&
               IsEqual(std::string_view(request.path).substr(1, end - 1), m_token);
    }

    void Answer(const httplib::Request& request, httplib::Response& response) {
        TuneRequest asked{request.path.substr(m_token.size() + 2), {}, request.method == "POST"};
        asked.query.insert(request.params.begin(), request.params.end());
        if (const PageFile* file = FindPageFile(asked.path); file != nullptr && !asked.writes) {
            response.set_content(file->content.data(), file->content.size(), file->type);
            return;
        }
        if (asked.path == "quit" && asked.writes) {
            m_quit();
            return;
        }
        const TuneReply reply = m_service.Reply(asked);
        response.status = reply.status;
        for (const auto& [name, value] : reply.headers) response.set_header(name, value);
        response.set_content(reply.body, reply.type);
    }

    TuneService& m_service;
    std::function<void()> m_quit;
    std::string m_token;
    PatientServer m_server;
    int m_port = -1;
    std::thread m_thread;
};

TuneServer::TuneServer(TuneService& service, uint16_t port, std::function<void()> quit)
    : m_impl(std::make_unique<Impl>(service, port, std::move(quit))) {}

TuneServer::~TuneServer() = default;

std::string TuneServer::Address() const {
    return m_impl->Address();
}

}  // namespace kvx::tool
