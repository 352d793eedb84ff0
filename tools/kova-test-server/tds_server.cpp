#include "tds_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>
#include <utility>

namespace kova::tds {
namespace {

void switchOn(int socket, int level, int option) {
    const int on = 1;
    setsockopt(socket, level, option, &on, sizeof on);
}

} // namespace

TdsServer::TdsServer(std::shared_ptr<DatabaseConnection> database, Access access)
    : database_(std::move(database)), access_(std::move(access)) {
    start();
}

void TdsServer::start() {
    listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    switchOn(listener_, SOL_SOCKET, SO_REUSEADDR);
    sockaddr_in address{AF_INET, htons(access_.port), {htonl(INADDR_LOOPBACK)}, {}};
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener_, generic, size) != 0 || listen(listener_, 8) != 0 ||
        getsockname(listener_, generic, &size) != 0)
        throw std::runtime_error("cannot listen on port " + std::to_string(access_.port));
    access_.port = ntohs(address.sin_port);
    acceptor_ = std::thread([this] { accept(); });
}

void TdsServer::accept() {
    for (;;) {
        const int socket = ::accept(listener_, nullptr, nullptr);
        if (socket < 0)
            return;
        switchOn(socket, IPPROTO_TCP, TCP_NODELAY);
        Client& client = clients_.emplace_back();
        client.session = std::make_unique<TdsSession>(socket, *this);
        client.thread = std::thread([&session = *client.session] { session.run(); });
    }
}

void TdsServer::stop() {
    if (listener_ < 0)
        return;
    shutdown(listener_, SHUT_RDWR);
    acceptor_.join();
    close(listener_);
    listener_ = -1;
    letGo();
    for (Client& client : clients_) {
        client.session->hangUp();
        client.thread.join();
    }
    clients_.clear();
}

std::string TdsServer::connectionString(const std::string& more) const {
    return std::string("Driver=") + KOVA_FREETDS_DRIVER +
           ";Server=127.0.0.1;Port=" + std::to_string(access_.port) + ";Database=shop;Uid=" + access_.user +
           ";Pwd={" + access_.password + "};TDS_Version=" + access_.version + ";" + more;
}

void TdsServer::add(Fault fault) {
    const std::lock_guard lock(mutex_);
    faults_.push_back(std::move(fault));
}

void TdsServer::recover() {
    setLogIns(LogIns::Accept);
    {
        const std::lock_guard lock(mutex_);
        faults_.clear();
    }
    letGo();
    if (listener_ < 0)
        start();
}

void TdsServer::letGo() {
    const std::lock_guard lock(mutex_);
    ++recoveries_;
    changed_.notify_all();
}

void TdsServer::holdUntilRecovery() {
    std::unique_lock lock(mutex_);
    ++held_;
    changed_.notify_all();
    changed_.wait(lock, [this, before = recoveries_] { return recoveries_ != before; });
    --held_;
}

bool TdsServer::awaitHeld() {
    using namespace std::chrono_literals;
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, 10s, [this] { return held_ > 0; });
}

std::vector<ExecuteCall> TdsServer::takeReceived() {
    const std::lock_guard lock(mutex_);
    return std::exchange(received_, {});
}

std::vector<unsigned> TdsServer::takeVersions() {
    const std::lock_guard lock(mutex_);
    return std::exchange(versions_, {});
}

LogIns TdsServer::logIn(const std::string& name, const std::string& secret, unsigned version) {
    const std::lock_guard lock(mutex_);
    versions_.push_back(version);
    return name == access_.user && secret == access_.password ? logIns_.load() : LogIns::Refuse;
}

std::optional<Fault> TdsServer::received(const ExecuteCall& call) {
    const std::lock_guard lock(mutex_);
    received_.push_back(call);
    for (Fault& fault : faults_) {
        if (fault.times > 0 && call.text.find(fault.piece) != std::string::npos) {
            --fault.times;
            return fault;
        }
    }
    return std::nullopt;
}

Recordset TdsServer::answer(const Query& query) {
    const std::lock_guard lock(mutex_);
    return database_->query(query);
}

} // namespace kova::tds
