#include "Sites.h"
#include "support/Printing.h"

#include <QRandomGenerator>
#include <atomic>
#include <thread>

using namespace mkl;
using namespace Qt::StringLiterals;

namespace {

/// Writes categories and assignments as fast as it can, and keeps the keys of what was acknowledged.
class Writer {
public:
    Writer(const Site& site, int digit, int round)
        : url_(site.url())
        , digit_(digit)
        , round_(round)
        , thread_([this] { write(); }) {}
    ~Writer() { finish(); }
    Q_DISABLE_COPY_MOVE(Writer)

    /// Number of acknowledged rows so far.
    int count() const { return count_; }
    void finish() {
        stopped_ = true;
        if (thread_.joinable()) thread_.join();
    }
    const QStringList& acknowledged() const { return acknowledged_; } ///< after finish()

private:
    void write() {
        try {
            const auto database = openCatalogue(*dao::DBEngine::CreateWorkspace(), url_);
            for (int i = 0; !stopped_ && i < 20'000; ++i) {
                const int key = (round_ * 20'000 + i) * 10 + digit_;
                database->Execute(u"INSERT INTO ARTKAT ([Artikel-Schlüssel], [Kategorie-Schlüssel], [Order]) "
                                  "VALUES (%1, 1, %1)"_s.arg(key),
                                  dao::dbFailOnError);
                acknowledged_.append(QString::number(key));
                ++count_;
            }
        } catch (const RunTimeError&) {
            // The server has gone; what was acknowledged counts.
        }
    }

    const QString url_;
    const int digit_;
    const int round_;
    QStringList acknowledged_;
    std::atomic<int> count_ = 0;
    std::atomic<bool> stopped_ = false;
    std::thread thread_;
};

} // namespace

// A few rounds always, twenty with MKL_FULL=1.
TEST(Kill, noAcknowledgedRowIsLostAndNoKeyIsGivenTwice) {
    const int rounds = qEnvironmentVariableIntValue("MKL_FULL") == 1 ? 20 : 3;
    Sites sites(2, {}, {u"fsync=on"_s});
    QRandomGenerator random(4711);
    QStringList acknowledged;
    for (int round = 0; round < rounds; ++round) {
        Writer first(sites[0], 1, round), second(sites[1], 2, round);
        const int rows = static_cast<int>(random.bounded(20, 200));
        ASSERT_TRUE(eventually([&] { return second.count() >= rows && first.count() > 0; }));
        sites[1].server().kill();
        second.finish();
        sites[1].server().start();
        first.finish();
        acknowledged += first.acknowledged() + second.acknowledged();
        sites.cut();
        sites.join(); // at once, where they would try again after some time by themselves
    }
    ASSERT_TRUE(sites.becomeEqual());
    for (std::size_t site = 0; site < sites.count(); ++site) {
        const QByteArray found =
            sites[site].native(u"SELECT count(DISTINCT \"Artikel-Schlüssel\") FROM \"ARTKAT\" WHERE "
                               "\"Artikel-Schlüssel\" IN (%1)"_s.arg(acknowledged.join(u',')));
        EXPECT_EQ(found.toLongLong(), acknowledged.size());
        EXPECT_EQ(sites[site].native(u"SELECT count(*) - count(DISTINCT \"ArtKatID\") FROM \"ARTKAT\""_s), "0");
    }
    std::printf("%d kills, %lld acknowledged rows\n", rounds, static_cast<long long>(acknowledged.size()));
}
