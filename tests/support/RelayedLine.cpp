#include "support/RelayedLine.h"

#include <algorithm>
#include <arpa/inet.h>
#include <functional>
#include <list>
#include <mutex>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace mkl {

namespace {

class Socket {
public:
    explicit Socket(int handle)
        : handle_(handle) {
        if (handle < 0) throw std::runtime_error("no socket");
    }
    ~Socket() { ::close(handle_); }
    Q_DISABLE_COPY_MOVE(Socket)
    int handle() const { return handle_; }

    void send(const QByteArray& bytes) const {
        for (qsizetype sent = 0; sent < bytes.size();) {
            const ssize_t count = ::send(handle_, bytes.constData() + sent, bytes.size() - sent, MSG_NOSIGNAL);
            if (count <= 0) return; // that the other end is gone shows with reading too
            sent += count;
        }
    }
    /// Waits for something; nothing where the other end is gone.
    QByteArray receive() const {
        QByteArray bytes(65536, Qt::Uninitialized);
        return bytes.left(std::max<ssize_t>(::recv(handle_, bytes.data(), bytes.size(), 0), 0));
    }
    template<class Address>
    bool connectsTo(const Address& address) const {
        return ::connect(handle_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }
    template<class Address>
    bool bindsTo(const Address& address) const {
        return ::bind(handle_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }

private:
    int handle_;
};

sockaddr_in ofThisMachine(const QByteArray& address, int port) {
    sockaddr_in result{};
    result.sin_family = AF_INET;
    result.sin_port = htons(static_cast<quint16>(port));
    inet_pton(AF_INET, address.constData(), &result.sin_addr);
    return result;
}

std::unique_ptr<Socket> callSocket(const QByteArray& folder) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, (folder + "/.s.PGSQL.5432").constData(), sizeof address.sun_path);
    auto socket = std::make_unique<Socket>(::socket(AF_UNIX, SOCK_STREAM, 0));
    return socket->connectsTo(address) ? std::move(socket) : nullptr;
}

std::unique_ptr<Socket> callPort(int port, const QByteArray& from) {
    auto socket = std::make_unique<Socket>(::socket(AF_INET, SOCK_STREAM, 0));
    const bool isThere =
        socket->bindsTo(ofThisMachine(from, 0)) && socket->connectsTo(ofThisMachine("127.0.0.1", port));
    return isThere ? std::move(socket) : nullptr;
}

struct Conversation {
    std::unique_ptr<Socket> client, server;
};

} // namespace

struct RelayedLine::Data {
    explicit Data(std::function<std::unique_ptr<Socket>()> call)
        : callServer(std::move(call)) {
        if (!calls.bindsTo(ofThisMachine("127.0.0.1", 0)) || ::listen(calls.handle(), 16) != 0)
            throw std::runtime_error("nobody can call");
        thread = std::thread([this] { run(); });
    }
    ~Data() {
        eventfd_write(end.handle(), 1);
        thread.join();
    }

    void run();
    void answerCall();
    bool carryToServer(const Conversation& conversation);
    static bool carryToClient(const Conversation& conversation);

    std::function<std::unique_ptr<Socket>()> callServer;
    Socket calls{::socket(AF_INET, SOCK_STREAM, 0)};
    Socket end{::eventfd(0, 0)};
    std::list<Conversation> conversations;
    std::thread thread;

    std::mutex mutex; ///< of what the test sets
    QByteArray cutBytes;
    Cut cut = Cut::BeforeTheServerHears;
    bool isCut = false;
    int refusedCalls = 0, refusedAfterwards = 0;
};

void RelayedLine::Data::run() {
    while (true) {
        std::vector<pollfd> sockets{{end.handle(), POLLIN, 0}, {calls.handle(), POLLIN, 0}};
        for (const Conversation& conversation : conversations) {
            sockets.push_back({conversation.client->handle(), POLLIN, 0});
            sockets.push_back({conversation.server->handle(), POLLIN, 0});
        }
        ::poll(sockets.data(), sockets.size(), -1);
        if (sockets[0].revents != 0) return;
        size_t place = 2;
        conversations.remove_if([&](const Conversation& conversation) {
            const bool client = sockets[place].revents != 0, server = sockets[place + 1].revents != 0;
            place += 2;
            return (server && !carryToClient(conversation)) || (client && !carryToServer(conversation));
        });
        if (sockets[1].revents != 0) answerCall();
    }
}

void RelayedLine::Data::answerCall() {
    auto client = std::make_unique<Socket>(::accept(calls.handle(), nullptr, nullptr));
    {
        const std::lock_guard lock(mutex);
        if (refusedCalls > 0) {
            refusedCalls -= refusedCalls == forGood ? 0 : 1;
            return;
        }
    }
    auto server = callServer();
    if (server) conversations.push_back({std::move(client), std::move(server)});
}

bool RelayedLine::Data::carryToServer(const Conversation& conversation) {
    const QByteArray bytes = conversation.client->receive();
    const std::lock_guard lock(mutex);
    const bool cutsHere = !cutBytes.isEmpty() && bytes.contains(cutBytes);
    if (cutsHere && cut == Cut::BeforeTheAnswerArrives) {
        conversation.server->send(bytes);
        conversation.server->receive();
    }
    if (cutsHere) {
        cutBytes.clear();
        isCut = true;
        refusedCalls = refusedAfterwards;
        return false;
    }
    conversation.server->send(bytes);
    return !bytes.isEmpty();
}

bool RelayedLine::Data::carryToClient(const Conversation& conversation) {
    const QByteArray bytes = conversation.server->receive();
    conversation.client->send(bytes);
    return !bytes.isEmpty();
}

RelayedLine::RelayedLine(const QByteArray& folder)
    : d_(std::make_unique<Data>([folder] { return callSocket(folder); })) {}

RelayedLine::RelayedLine(int port, const QByteArray& from)
    : d_(std::make_unique<Data>([port, from] { return callPort(port, from); })) {}

RelayedLine::~RelayedLine() = default;

int RelayedLine::port() const {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(d_->calls.handle(), reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

void RelayedLine::cutAt(const QByteArray& bytes, Cut cut, int refusedCalls) {
    const std::lock_guard lock(d_->mutex);
    d_->cutBytes = bytes;
    d_->cut = cut;
    d_->isCut = false;
    d_->refusedAfterwards = refusedCalls;
}

bool RelayedLine::isCut() const {
    const std::lock_guard lock(d_->mutex);
    return d_->isCut;
}

void RelayedLine::mend() {
    const std::lock_guard lock(d_->mutex);
    d_->refusedCalls = 0;
}

} // namespace mkl
