#include "dao/postgres/PostgresKey.h"

#include "jet/functions/Collation.h"
#include "jet/functions/Letters.h"

#include <QByteArrayList>
#include <QChar>
#include <QString>

namespace dao {

namespace {

constexpr char32_t latinEnd = 0x180;
constexpr char32_t lastCharacter = 0x10FFFF;
constexpr char separator = 1, letterMark = 2;

QByteArray literal(const QByteArray& utf8) {
    return '\'' + QByteArray(utf8).replace('\'', "''") + '\'';
}

QByteArray utf8Of(char32_t c) {
    return QString::fromUcs4(&c, 1).toUtf8();
}

QByteArray hexOf(const QByteArray& bytes) {
    return "'\\x" + bytes.toHex() + '\'';
}

/// What a character adds to the parts of a key.
struct KeyParts {
    QByteArray base, accents;
    bool isPlain = false; ///< one or two weights and at most one accent
};

bool isHyphen(char32_t c) {
    return c == U'\'' || c == U'-' || c == 0xAD || c == 0x2019 || c == 0x2010 || c == 0x2011;
}

// A letter behind it keeps its own parts together.
KeyParts partsOf(char32_t c) {
    const QByteArray key = jet::sortKey(QString::fromUcs4(&c, 1) + u'z');
    const qsizetype end = key.indexOf(separator);
    KeyParts parts;
    parts.base = (end < 0 ? key : key.left(end)).chopped(1);
    parts.accents = end < 0 ? QByteArray() : key.mid(end + 1);
    parts.isPlain = parts.base.size() == 1 || parts.base.size() == 2;
    if (parts.accents.isEmpty()) parts.accents = QByteArray(parts.base.size() == 2 ? 2 : 1, letterMark);
    return parts;
}

/// The characters for which translate() gives a key.
struct LatinLists {
    QByteArray from, weights, accented, accents, plain, allowed, folded, unfolded;
    QByteArrayList doubled; ///< "'ß', 'ss'"
};

LatinLists latinLists() {
    LatinLists lists;
    for (char32_t c = 0x20; c < latinEnd; ++c) {
        if (isHyphen(c)) continue;
        const KeyParts parts = partsOf(c);
        if (!parts.isPlain) continue;
        const QByteArray character = utf8Of(c);
        lists.allowed += character;
        const jet::FoldedCharacter folded = jet::foldCharacter(c);
        if (folded.second) {
            lists.doubled.append(literal(character) + ", " + literal(utf8Of(folded.first) + utf8Of(folded.second)));
            continue;
        }
        if (folded.first != c && folded.first < latinEnd) {
            lists.unfolded += character;
            lists.folded += utf8Of(folded.first);
        }
        lists.from += character;
        lists.weights += parts.base;
        if (parts.accents.size() > 1) {
            lists.accented += character;
            lists.accents += parts.accents.mid(1, 1);
        } else {
            lists.plain += character;
        }
    }
    return lists;
}

QByteArray replacing(QByteArray text, const QByteArrayList& pairs) {
    for (const QByteArray& pair : pairs)
        text = "replace(" + text + ", " + pair + ')';
    return text;
}

QByteArray bracketed(const QByteArray& characters) {
    QByteArray set;
    for (const uint c : QString::fromUtf8(characters).toUcs4())
        set += (c < 0x80 && !QChar::isLetterOrNumber(c) ? QByteArray("\\") : QByteArray()) + utf8Of(c);
    return set;
}

// Letters 0, digits 1, invisible 2, symbols 3, accents 4, as the order of texts divides them.
int classOf(char32_t c) {
    const auto own = QChar::category(c);
    if (own == QChar::Mark_NonSpacing || own == QChar::Mark_Enclosing) return 4;
    const char32_t folded = QChar::toCaseFolded(c);
    const auto category = QChar::category(folded);
    if (QChar::isLetter(folded) || category == QChar::Mark_SpacingCombining) return 0;
    if (QChar::isNumber(folded)) return 1;
    const bool invisible =
        QChar::isSpace(folded) || category == QChar::Other_Control || category == QChar::Other_Format;
    return invisible ? 2 : 3;
}

QByteArray characterTables() {
    QByteArrayList latin, ranges, cases;
    for (char32_t c = 1; c < latinEnd; ++c) {
        const KeyParts parts = partsOf(c);
        if (!isHyphen(c))
            latin.append('(' + QByteArray::number(c) + ", " + hexOf(parts.base) + ", " + hexOf(parts.accents) + ')');
    }
    int last = -1;
    for (char32_t c = latinEnd; c <= lastCharacter; ++c) {
        if (const int kind = classOf(c); kind != last) {
            ranges.append('(' + QByteArray::number(c) + ", " + QByteArray::number(kind) + ')');
            last = kind;
        }
        if (const char32_t folded = QChar::toCaseFolded(c); folded != c)
            cases.append('(' + QByteArray::number(c) + ", " + QByteArray::number(folded) + ')');
    }
    return "CREATE TABLE IF NOT EXISTS mkl.latin (c integer PRIMARY KEY, base bytea, accents bytea);"
           "CREATE TABLE IF NOT EXISTS mkl.kind (c integer PRIMARY KEY, kind integer);"
           "CREATE TABLE IF NOT EXISTS mkl.folding (c integer PRIMARY KEY, folded integer);"
           "DELETE FROM mkl.latin; DELETE FROM mkl.kind; DELETE FROM mkl.folding;"
           "INSERT INTO mkl.latin VALUES " +
           latin.join(",") + ";INSERT INTO mkl.kind VALUES " + ranges.join(",") + ";INSERT INTO mkl.folding VALUES " +
           cases.join(",") + ';';
}

QByteArray classByte(const QString& sample) {
    return QByteArray::number(static_cast<uchar>(jet::sortKey(sample)[0]));
}

// Any text, character by character.
QByteArray generalKey() {
    return R"(CREATE FUNCTION mkl.mkl_number(n integer, lowest integer) RETURNS bytea LANGUAGE sql IMMUTABLE AS $$
SELECT set_byte(set_byte(set_byte(set_byte(set_byte('\x0000000000'::bytea, 0, lowest + ((n >> 28) & 127)),
 1, lowest + ((n >> 21) & 127)), 2, lowest + ((n >> 14) & 127)), 3, lowest + ((n >> 7) & 127)), 4, lowest + (n & 127)) $$;
CREATE FUNCTION mkl.mkl_key_any(x text) RETURNS bytea LANGUAGE plpgsql IMMUTABLE STRICT AS $$
DECLARE t text := rtrim(x, ' '); base bytea := ''; accents bytea := ''; hyphens bytea := ''; letters integer := 0;
 ch text; n integer; f integer; b bytea; a bytea; k integer; i integer;
BEGIN
 IF t ~ '[^\x01-\u017F]' THEN t := normalize(t, NFD); END IF;
 FOREACH ch IN ARRAY string_to_array(t, NULL) LOOP
  n := ascii(ch);
  i := position(ch IN '''’-' || chr(173) || chr(8208) || chr(8209));
  SELECT folded INTO f FROM mkl.folding WHERE c = n;
  f := coalesce(f, n);
  IF i > 0 THEN
   hyphens := hyphens || mkl.mkl_number(letters, 2) || set_byte('\x00'::bytea, 0, i + 1);
  ELSIF f < 384 THEN
   SELECT l.base, l.accents INTO b, a FROM mkl.latin l WHERE l.c = f;
   base := base || b; accents := accents || a;
   letters := letters + CASE WHEN length(b) = 2 THEN 2 ELSE 1 END;
  ELSE
   SELECT kind INTO k FROM mkl.kind WHERE mkl.kind.c <= n ORDER BY mkl.kind.c DESC LIMIT 1;
   IF k = 4 THEN
    accents := accents || CASE WHEN n BETWEEN 768 AND 879 THEN set_byte('\x00'::bytea, 0, n - 768 + 3)
     ELSE '\xf0'::bytea || mkl.mkl_number(n, 3) END;
   ELSE
    letters := letters + 1; accents := accents || '\x02'::bytea;
    base := base || set_byte('\x00'::bytea, 0, CASE k WHEN 0 THEN @LETTER@ WHEN 1 THEN @NUMBER@ WHEN 2 THEN @SPACE@
     ELSE @SYMBOL@ END) || mkl.mkl_number(f, 2);
   END IF;
  END IF;
 END LOOP;
 WHILE length(accents) > 0 AND get_byte(accents, length(accents) - 1) = 2 LOOP
  accents := substr(accents, 1, length(accents) - 1); END LOOP;
 base := base || '\x01'::bytea || accents || '\x01'::bytea || hyphens;
 WHILE length(base) > 0 AND get_byte(base, length(base) - 1) = 1 LOOP base := substr(base, 1, length(base) - 1); END LOOP;
 RETURN base;
END $$;)";
}

} // namespace

QByteArray postgresKeyDefinitions() {
    const LatinLists lists = latinLists();
    QByteArray general = generalKey();
    general.replace("@LETTER@", classByte(QStringLiteral("\u0436")));
    general.replace("@NUMBER@", classByte(QStringLiteral("\u0663")));
    general.replace("@SPACE@", classByte(QStringLiteral("\u2003x")));
    general.replace("@SYMBOL@", classByte(QStringLiteral("\u20AC")));
    const QByteArray letters = replacing("rtrim($1, ' ')", lists.doubled);
    const QByteArray base = "translate(" + letters + ", " + literal(lists.from) + ", " + literal(lists.weights) + ')';
    const QByteArray marked = "translate(" + letters + ", " + literal(lists.plain + lists.accented) + ", " +
                              literal(QByteArray(QString::fromUtf8(lists.plain).size(), letterMark) + lists.accents) +
                              ')';
    const QByteArray accents = "rtrim(regexp_replace(" + marked + ", '([^\\x02])', chr(2) || '\\1', 'g'), chr(2))";
    const QByteArray latin = "rtrim(" + base + " || chr(1) || " + accents + ", chr(1))";
    const QByteArray ascii = "translate(rtrim($1, ' '), " + literal(lists.from) + ", " + literal(lists.weights) + ')';
    return characterTables() + general +
           "CREATE FUNCTION mkl.mkl_key(text) RETURNS bytea LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $mkl$ SELECT CASE "
           "WHEN $1 !~ '[^ -~]|[''-]' THEN convert_to(" +
           ascii + ", 'UTF8') WHEN $1 !~ " + literal("[^" + bracketed(lists.allowed) + ']') + " THEN convert_to(" +
           latin + ", 'UTF8') ELSE mkl.mkl_key_any($1) END $mkl$;" +
           "CREATE FUNCTION mkl.mkl_fold(text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $mkl$ SELECT "
           "translate(" +
           replacing("$1", lists.doubled) + ", " + literal(lists.unfolded) + ", " + literal(lists.folded) + ") $mkl$;";
}

} // namespace dao
