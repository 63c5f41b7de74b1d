#include "dao/postgres/PostgresFunctions.h"

#include "base/Texts.h"
#include "dao/Errors.h"
#include "dao/postgres/PostgresKey.h"

namespace dao {

namespace {

// Raise it with every change of a definition.
constexpr int version = 6;

constexpr const char* beginText = "SELECT pg_advisory_xact_lock(7355608); DROP SCHEMA IF EXISTS mkl_old CASCADE; "
                                  "CREATE SCHEMA IF NOT EXISTS mkl;";

// Types and tables are kept when a later version comes over an older one: columns and indexes rest on them.
constexpr const char* typesText = R"(
DO $$ BEGIN
IF to_regclass('mkl.local') IS NOT NULL THEN RETURN; END IF;
CREATE DOMAIN mkl.yesno AS smallint;
CREATE DOMAIN mkl.byte AS smallint CHECK (VALUE BETWEEN 0 AND 255);
CREATE DOMAIN mkl.currency AS double precision;
CREATE DOMAIN mkl.datetime AS timestamp(0);
CREATE DOMAIN mkl.double AS double precision;
CREATE DOMAIN mkl.blob AS bytea;
CREATE DOMAIN mkl.variant AS text;
CREATE TABLE mkl.local (number integer NOT NULL);
INSERT INTO mkl.local VALUES (0);
END $$;
)";

// What opens the database needs no right to make anything in it.
constexpr const char* rightsText = R"(
GRANT USAGE ON SCHEMA mkl TO PUBLIC;
GRANT SELECT ON ALL TABLES IN SCHEMA mkl TO PUBLIC;
)";

// A run-time error of the dialect, and a question that the server cannot answer.
constexpr const char* errorsText = R"(
CREATE FUNCTION mkl.mkl_raise(number integer) RETURNS integer LANGUAGE plpgsql AS $$
BEGIN RAISE EXCEPTION USING ERRCODE = 'MKERR', MESSAGE = number::text; END $$;
CREATE FUNCTION mkl.mkl_beyond() RETURNS integer LANGUAGE plpgsql AS $$
BEGIN RAISE EXCEPTION USING ERRCODE = 'MK001', MESSAGE = 'beyond the server'; END $$;
)";

constexpr const char* textText = R"(
CREATE FUNCTION mkl.mkl_like(text, text) RETURNS integer LANGUAGE sql STABLE AS $$
SELECT CASE WHEN $1 IS NULL OR $2 IS NULL THEN NULL
 WHEN $2 ~ '[][?#]|[^\x01-\u012F\u0131-\u0148\u014A-\u017E]' OR $1 ~ '[^\x01-\u012F\u0131-\u0148\u014A-\u017E]'
 THEN mkl.mkl_beyond()
 ELSE -((mkl.mkl_fold($1) LIKE replace(replace(replace(replace(mkl.mkl_fold($2), '\', '\\'), '%', '\%'), '_', '\_'),
  '*', '%'))::integer) END $$;
CREATE FUNCTION mkl.mkl_like(integer, text) RETURNS integer LANGUAGE sql STABLE AS $$
SELECT mkl.mkl_like($1::text, $2) $$;
CREATE FUNCTION mkl.mkl_right(text, bigint) RETURNS text LANGUAGE sql STABLE AS $$
SELECT CASE WHEN $2 < 0 THEN mkl.mkl_raise(5)::text ELSE right($1, least($2, 100000000)::integer) END $$;
CREATE FUNCTION mkl.mkl_right(integer, bigint) RETURNS text LANGUAGE sql STABLE AS $$
SELECT mkl.mkl_right($1::text, $2) $$;
CREATE FUNCTION mkl.mkl_left(text, bigint) RETURNS text LANGUAGE sql STABLE AS $$
SELECT CASE WHEN $2 < 0 THEN mkl.mkl_raise(5)::text ELSE left($1, least($2, 100000000)::integer) END $$;
CREATE FUNCTION mkl.mkl_left(integer, bigint) RETURNS text LANGUAGE sql STABLE AS $$
SELECT mkl.mkl_left($1::text, $2) $$;
CREATE FUNCTION mkl.mkl_concat(text, text) RETURNS text LANGUAGE sql IMMUTABLE AS $$
SELECT CASE WHEN $1 IS NULL AND $2 IS NULL THEN NULL ELSE coalesce($1, '') || coalesce($2, '') END $$;
CREATE FUNCTION mkl.mkl_concat(bigint, text) RETURNS text LANGUAGE sql IMMUTABLE AS $$
SELECT mkl.mkl_concat($1::text, $2) $$;
CREATE FUNCTION mkl.mkl_concat(text, bigint) RETURNS text LANGUAGE sql IMMUTABLE AS $$
SELECT mkl.mkl_concat($1, $2::text) $$;
CREATE FUNCTION mkl.mkl_concat(bigint, bigint) RETURNS text LANGUAGE sql IMMUTABLE AS $$
SELECT mkl.mkl_concat($1::text, $2::text) $$;
CREATE FUNCTION mkl.mkl_number_of(text) RETURNS bigint LANGUAGE sql STABLE AS $$
SELECT CASE WHEN $1 IS NULL THEN NULL WHEN $1 !~ '^-?[0-9]{1,15}$' THEN mkl.mkl_beyond()::bigint
 ELSE $1::bigint END $$;
)";

// The client's clock counts, which it tells before a statement that asks for it.
constexpr const char* clockText = R"(
CREATE FUNCTION mkl.mkl_now() RETURNS timestamp LANGUAGE sql STABLE AS $$
SELECT current_setting('mkl.now', true)::timestamp $$;
CREATE FUNCTION mkl.mkl_date() RETURNS timestamp LANGUAGE sql STABLE AS $$
SELECT date_trunc('day', mkl.mkl_now()) $$;
CREATE FUNCTION mkl.mkl_time() RETURNS timestamp LANGUAGE sql STABLE AS $$
SELECT '1899-12-30'::timestamp + mkl.mkl_now()::time $$;
)";

constexpr const char* numbersText = R"(
CREATE FUNCTION mkl.mkl_long(bigint) RETURNS bigint LANGUAGE sql STABLE AS $$
SELECT CASE WHEN $1 NOT BETWEEN -2147483648 AND 2147483647 THEN mkl.mkl_raise(6)::bigint ELSE $1 END $$;
CREATE FUNCTION mkl.mkl_add(bigint, bigint) RETURNS bigint LANGUAGE sql STABLE AS $$ SELECT mkl.mkl_long($1 + $2) $$;
CREATE FUNCTION mkl.mkl_subtract(bigint, bigint) RETURNS bigint LANGUAGE sql STABLE AS $$
SELECT mkl.mkl_long($1 - $2) $$;
CREATE FUNCTION mkl.mkl_multiply(bigint, bigint) RETURNS bigint LANGUAGE sql STABLE AS $$
SELECT mkl.mkl_long($1 * $2) $$;
CREATE FUNCTION mkl.mkl_negate(bigint) RETURNS bigint LANGUAGE sql STABLE AS $$ SELECT mkl.mkl_long(-$1) $$;
)";

QByteArray comparisons() {
    struct Comparison {
        const char* name;
        const char* sign;
    };
    constexpr Comparison table[] = {{"mkl_equal", "="},       {"mkl_not_equal", "<>"}, {"mkl_less", "<"},
                                    {"mkl_less_equal", "<="}, {"mkl_greater", ">"},    {"mkl_greater_equal", ">="}};
    QByteArray text;
    for (const auto& [name, sign] : table) {
        const QByteArray head = QByteArray("CREATE FUNCTION mkl.") + name;
        text += head + "(text, bigint) RETURNS integer LANGUAGE sql STABLE AS $$ SELECT -((mkl.mkl_number_of($1) " +
                sign + " $2)::integer) $$;";
        text += head + "(bigint, text) RETURNS integer LANGUAGE sql STABLE AS $$ SELECT -(($1 " + sign +
                " mkl.mkl_number_of($2))::integer) $$;";
    }
    return text;
}

constexpr const char* tablesText = R"(
CREATE FUNCTION mkl.mkl_store_key(anyelement) RETURNS anyelement LANGUAGE plpgsql STABLE AS $$
BEGIN IF $1 IS NULL THEN PERFORM mkl.mkl_raise(3058); END IF; RETURN $1; END $$;
CREATE FUNCTION mkl.mkl_sequence(named text, counter text) RETURNS text LANGUAGE sql STABLE AS $$
SELECT coalesce(pg_get_serial_sequence(named, counter), (SELECT substring(pg_get_expr(d.adbin, d.adrelid)
 FROM '''(.*)''') FROM pg_attrdef d JOIN pg_attribute a ON a.attrelid = d.adrelid AND a.attnum = d.adnum
 WHERE d.adrelid = named::regclass AND a.attname = counter)) $$;
CREATE FUNCTION mkl.mkl_next(named text, counter text) RETURNS bigint LANGUAGE plpgsql AS $$
DECLARE seq text := mkl.mkl_sequence(named, counter); n bigint; highest bigint; step bigint;
BEGIN
 n := nextval(seq::regclass);
 EXECUTE format('SELECT max(%I) FROM %s', counter, named) INTO highest;
 IF highest >= n THEN
  SELECT seqincrement INTO step FROM pg_sequence WHERE seqrelid = seq::regclass;
  n := n + ((highest - n) / step + 1) * step;
  PERFORM setval(seq::regclass, n);
 END IF;
 RETURN n;
END $$;
CREATE FUNCTION mkl.mkl_catch_up(named text) RETURNS boolean LANGUAGE plpgsql AS $$
DECLARE c record; seq text; n bigint; taken bigint; moved boolean := false;
BEGIN
 FOR c IN SELECT a.attname FROM pg_attribute a LEFT JOIN pg_attrdef d ON d.adrelid = a.attrelid
  AND d.adnum = a.attnum WHERE a.attrelid = named::regclass AND NOT a.attisdropped AND a.attname <> 'mkl_rowid'
  AND (a.attidentity <> '' OR pg_get_expr(d.adbin, d.adrelid) LIKE 'nextval(%') LOOP
  seq := mkl.mkl_sequence(named, c.attname);
  n := nextval(seq::regclass);
  EXECUTE format('SELECT max(%I) FROM %s', c.attname, named) INTO taken;
  moved := moved OR taken >= n;
  IF taken >= n THEN n := mkl.mkl_next(named, c.attname); END IF;
  PERFORM setval(seq::regclass, n, false);
 END LOOP;
 RETURN moved;
END $$;
CREATE FUNCTION mkl.mkl_counter(named regclass) RETURNS text LANGUAGE sql STABLE AS $$
SELECT a.attname FROM pg_attribute a LEFT JOIN pg_attrdef d ON d.adrelid = a.attrelid AND d.adnum = a.attnum
 WHERE a.attrelid = named AND NOT a.attisdropped AND a.attname <> 'mkl_rowid'
 AND (a.attidentity <> '' OR pg_get_expr(d.adbin, d.adrelid) LIKE 'nextval(%') LIMIT 1 $$;
CREATE FUNCTION mkl.mkl_follow() RETURNS trigger LANGUAGE plpgsql AS $$
DECLARE seq regclass := TG_ARGV[1]::regclass; highest bigint; n bigint; called boolean; step bigint; top bigint;
BEGIN
 EXECUTE format('SELECT max(%I) FROM added', TG_ARGV[0]) INTO highest;
 IF highest IS NULL THEN RETURN NULL; END IF;
 EXECUTE format('SELECT last_value, is_called FROM %s', seq) INTO n, called;
 IF highest < n OR (called AND highest = n) THEN RETURN NULL; END IF;
 SELECT seqincrement, seqmax INTO step, top FROM pg_sequence WHERE seqrelid = seq;
 IF step < 1 THEN RETURN NULL; END IF;
 n := n + ((highest - n) / step + 1) * step;
 IF n > top THEN PERFORM setval(seq, top); ELSE PERFORM setval(seq, n, false); END IF;
 RETURN NULL;
END $$;
CREATE FUNCTION mkl.mkl_notify() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN PERFORM pg_notify('mkl_changed', ''); RETURN NULL; END $$;
CREATE FUNCTION mkl.mkl_notify_changes_of(named regclass) RETURNS void LANGUAGE plpgsql AS $$
BEGIN
 EXECUTE format('CREATE TRIGGER mkl_changed AFTER INSERT OR UPDATE OR DELETE OR TRUNCATE ON %s FOR EACH STATEMENT '
  'EXECUTE FUNCTION mkl.mkl_notify()', named);
 EXECUTE format('CREATE TRIGGER mkl_applied AFTER INSERT OR UPDATE OR DELETE ON %s FOR EACH ROW '
  'EXECUTE FUNCTION mkl.mkl_notify()', named);
 EXECUTE format('ALTER TABLE %s ENABLE REPLICA TRIGGER mkl_applied', named);
END $$;
CREATE FUNCTION mkl.mkl_complete_tables() RETURNS void LANGUAGE plpgsql AS $$
DECLARE t record;
BEGIN
 FOR t IN SELECT c.oid::regclass AS named FROM pg_class c WHERE c.relnamespace = 'public'::regnamespace
  AND c.relkind = 'r' AND NOT EXISTS (SELECT 1 FROM pg_index i WHERE i.indrelid = c.oid AND i.indisprimary)
  AND NOT EXISTS (SELECT 1 FROM pg_attribute a WHERE a.attrelid = c.oid AND a.attname = 'mkl_rowid') LOOP
  EXECUTE format('ALTER TABLE %s ADD COLUMN mkl_rowid bigint GENERATED ALWAYS AS IDENTITY UNIQUE', t.named);
 END LOOP;
 FOR t IN SELECT c.oid::regclass AS named, mkl.mkl_counter(c.oid) AS counter FROM pg_class c
  WHERE c.relnamespace = 'public'::regnamespace AND c.relkind = 'r' AND mkl.mkl_counter(c.oid) IS NOT NULL
  AND NOT EXISTS (SELECT 1 FROM pg_trigger g WHERE g.tgrelid = c.oid AND g.tgname = 'mkl_follow') LOOP
  EXECUTE format('CREATE TRIGGER mkl_follow AFTER INSERT ON %s REFERENCING NEW TABLE AS added FOR EACH STATEMENT '
   'EXECUTE FUNCTION mkl.mkl_follow(%L, %L)', t.named, t.counter, mkl.mkl_sequence(t.named::text, t.counter));
 END LOOP;
 FOR t IN SELECT c.oid::regclass AS named FROM pg_class c WHERE c.relnamespace = 'public'::regnamespace
  AND c.relkind = 'r' AND NOT EXISTS (SELECT 1 FROM pg_trigger g WHERE g.tgrelid = c.oid AND g.tgname = 'mkl_changed')
 LOOP
  PERFORM mkl.mkl_notify_changes_of(t.named);
 END LOOP;
END $$;
)";

// A later version does all that this one asks for.
bool isInstalled(PostgresSession& session) {
    const PostgresResult found =
        session.script("SELECT obj_description(oid, 'pg_namespace') FROM pg_namespace WHERE nspname = 'mkl'");
    return PQntuples(found.get()) == 1 && QByteArray(PQgetvalue(found.get(), 0, 0)).toInt() >= version;
}

QByteArray definitions() {
    const QByteArray text = QByteArray(errorsText) + postgresKeyDefinitions() + textText + clockText + numbersText +
                            comparisons() + tablesText;
    return QByteArray(text).replace("CREATE FUNCTION", "CREATE OR REPLACE FUNCTION");
}

} // namespace

void PostgresFunctions::install(PostgresSession& session) {
    if (isInstalled(session)) return;
    session.script("BEGIN");
    try {
        session.script(beginText); // waits for others who install
        if (!isInstalled(session))
            session.script(typesText + definitions() + rightsText + "COMMENT ON SCHEMA mkl IS '" +
                           QByteArray::number(version) + '\'');
        session.script("COMMIT");
    } catch (const mkl::RunTimeError& error) {
        session.script("ROLLBACK");
        if (error.number() != err::NotPermitted) throw;
        throw mkl::RunTimeError(err::NotPermitted, mkl::text(mkl::TextId::ServerNotPrepared, {session.name()}),
                                error.source());
    } catch (...) {
        session.script("ROLLBACK");
        throw;
    }
}

} // namespace dao
