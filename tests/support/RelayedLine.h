#pragma once
// A line to a server that a test can cut where it likes: between the server's work and the answer that tells of it.
#include <QByteArray>
#include <climits>
#include <memory>

namespace mkl {

class RelayedLine {
public:
    enum class Cut : quint8 { BeforeTheServerHears, BeforeTheAnswerArrives };
    static constexpr int forGood = INT_MAX;

    /// Leads to the server whose socket is in that folder.
    explicit RelayedLine(const QByteArray& folder);
    /// Leads to a port of this machine, and comes there from another one of its addresses (127.0.0.2 and so on).
    RelayedLine(int port, const QByteArray& from);
    ~RelayedLine();
    Q_DISABLE_COPY_MOVE(RelayedLine)

    /// Where clients call, at 127.0.0.1.
    int port() const;
    /// The line of the client that sends these bytes next is cut, once. The next so many calls are hung up on.
    void cutAt(const QByteArray& bytes, Cut cut, int refusedCalls = 0);
    /// Whether that has happened.
    bool isCut() const;
    /// Calls are carried again.
    void mend();

private:
    struct Data;
    std::unique_ptr<Data> d_;
};

} // namespace mkl
