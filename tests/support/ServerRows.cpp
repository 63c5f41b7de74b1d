#include "support/ServerRows.h"

#include "support/PostgresServer.h"

namespace mkl {

namespace {

constexpr const char* keepText = R"(
DROP SCHEMA IF EXISTS kept CASCADE; CREATE SCHEMA kept;
CREATE TABLE kept.sequences (name text, number bigint, called boolean);
DO $$ DECLARE t record; BEGIN
 FOR t IN SELECT tablename AS name FROM pg_tables WHERE schemaname = 'public' LOOP
  EXECUTE format('CREATE TABLE kept.%I AS TABLE public.%I', t.name, t.name);
 END LOOP;
 FOR t IN SELECT sequencename AS name FROM pg_sequences WHERE schemaname = 'public' LOOP
  EXECUTE format('INSERT INTO kept.sequences SELECT %L, last_value, is_called FROM public.%I', t.name, t.name);
 END LOOP;
END $$;
)";

// As rows that come from another server, which fire no triggers.
constexpr const char* restoreText = R"(
SET session_replication_role = replica;
DO $$ DECLARE t record; BEGIN
 FOR t IN SELECT tablename AS name FROM pg_tables WHERE schemaname = 'public' LOOP
  EXECUTE format('DELETE FROM public.%I', t.name);
  EXECUTE format('INSERT INTO public.%I OVERRIDING SYSTEM VALUE SELECT * FROM kept.%I', t.name, t.name);
 END LOOP;
 FOR t IN SELECT * FROM kept.sequences LOOP
  PERFORM setval(format('public.%I', t.name)::regclass, t.number, t.called);
 END LOOP;
END $$;
)";

constexpr const char* contentText = R"(
CREATE OR REPLACE FUNCTION pg_temp.content() RETURNS text LANGUAGE plpgsql AS $$
DECLARE t record; rows text; result text := ''; BEGIN
 FOR t IN SELECT tablename AS name FROM pg_tables WHERE schemaname = 'public' ORDER BY tablename COLLATE "C" LOOP
  EXECUTE format('SELECT string_agg(r::text, '' '' ORDER BY r::text COLLATE "C") FROM public.%I AS r', t.name)
   INTO rows;
  result := result || t.name || ': ' || coalesce(rows, '') || E'\n';
 END LOOP;
 RETURN result;
END $$;
SELECT pg_temp.content();
)";

} // namespace

void ServerRows::keep() const {
    runOnServer(url_, keepText);
}

void ServerRows::restore() const {
    runOnServer(url_, restoreText);
}

QByteArray ServerRows::content() const {
    return runOnServer(url_, contentText);
}

} // namespace mkl
