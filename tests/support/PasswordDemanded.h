#pragma once
#include "support/PostgresServer.h"

namespace mkl {

/// The server asks a user for a password as long as the object lives.
class PasswordDemanded {
public:
    PasswordDemanded(const QString& url, const QByteArray& user)
        : url_(url)
        , rules_(runOnServer(url, "SELECT pg_read_file(current_setting('hba_file'))")) {
        setRules("local all " + user + " scram-sha-256\n" + rules_);
    }
    ~PasswordDemanded() { setRules(rules_); }
    Q_DISABLE_COPY_MOVE(PasswordDemanded)

private:
    void setRules(const QByteArray& rules) const {
        runOnServer(url_,
                    "DO $do$ BEGIN EXECUTE format('COPY (SELECT unnest(string_to_array(%L, chr(10)))) TO %L', $hba$" +
                        rules + "$hba$, current_setting('hba_file')); END $do$");
        const QByteArray before = loaded();
        runOnServer(url_, "SELECT pg_reload_conf()");
        while (loaded() == before) {
        }
    }
    QByteArray loaded() const { return runOnServer(url_, "SELECT pg_conf_load_time()"); }

    QString url_;
    QByteArray rules_;
};

} // namespace mkl
