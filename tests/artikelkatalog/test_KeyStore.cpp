#include "ScriptedKeyStore.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace mkl;

namespace {

// A machine without a desktop has none; nothing then may wait, and nothing may be written elsewhere instead.
TEST(KeyStore, WithoutAMessageBusThereIsNone) {
    const QByteArray bus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus");
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(keyStore().find(u"clerk@server"_s), std::nullopt);
    EXPECT_FALSE(keyStore().keep(u"clerk@server"_s, u"geheim"_s));
    keyStore().forget(u"clerk@server"_s);
    EXPECT_EQ(keyStore().find(u"clerk@server"_s), std::nullopt);
    EXPECT_LT(timer.elapsed(), 10'000);
    bus.isNull() ? qunsetenv("DBUS_SESSION_BUS_ADDRESS") : qputenv("DBUS_SESSION_BUS_ADDRESS", bus);
}

TEST(KeyStore, IsReplaceable) {
    {
        ScriptedKeyStore store;
        EXPECT_TRUE(keyStore().keep(u"a"_s, u"x"_s));
        EXPECT_EQ(keyStore().find(u"a"_s), u"x"_s);
        EXPECT_EQ(keyStore().find(u"b"_s), QString());
        keyStore().forget(u"a"_s);
        EXPECT_EQ(keyStore().find(u"a"_s), QString());
    }
    KeyStore* const platform = &keyStore();
    const ScriptedKeyStore store;
    EXPECT_NE(&keyStore(), platform);
}

} // namespace
