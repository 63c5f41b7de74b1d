// The targets without libFuzzer, for every compiler: replays seeds and regressions, then runs a fixed number of
// mutations of them, drawn by a seed. Usage: replay_TARGET DICTIONARY NUMBER FILE|FOLDER... The input at work stands in
// the file replay_TARGET.input, which stays where the process ends by a finding.
#include "Numbered.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QDir>
#include <QFile>
#include <cstdio>
#include <random>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

constexpr qsizetype longestInput = 600;

/// The file with the input at work; mapped, so that noting an input costs nothing.
class Noted {
public:
    explicit Noted(const QString& path)
        : file_(path) {
        if (!file_.open(QIODevice::ReadWrite | QIODevice::Truncate) || !file_.resize(longestInput)) std::abort();
        memory_ = file_.map(0, longestInput);
    }
    ~Noted() { file_.remove(); }
    Q_DISABLE_COPY_MOVE(Noted)

    /// Whether the target accepted it.
    bool run(const QByteArray& input) {
        const qsizetype size = std::min(input.size(), longestInput);
        std::memset(memory_, ' ', longestInput);
        std::memcpy(memory_, input.constData(), static_cast<size_t>(size));
        fuzz::accepted = false;
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.constData()), static_cast<size_t>(input.size()));
        return fuzz::accepted;
    }

private:
    QFile file_;
    uchar* memory_ = nullptr;
};

QByteArray contentOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(path));
        std::exit(2);
    }
    return file.readAll();
}

/// "…" entries with \xNN and \" in them, as libFuzzer takes them.
QByteArrayList dictionary(const QString& path) {
    QByteArrayList words;
    for (const QByteArray& line : contentOf(path).split('\n')) {
        if (!line.startsWith('"')) continue;
        QByteArray word;
        for (qsizetype i = 1; i < line.size() - 1; ++i) {
            if (line[i] != '\\') {
                word += line[i];
            } else if (line[++i] == 'x') {
                word += static_cast<char>(line.mid(i + 1, 2).toInt(nullptr, 16));
                i += 2;
            } else {
                word += line[i];
            }
        }
        words.append(word);
    }
    return words;
}

// The statement or criterion in a line of tests/corpus; the lines of expectations have none.
QByteArray statementIn(const QByteArray& line, bool marked) {
    if (!marked) return line.mid(line.indexOf('\t') + 1);
    for (const char* mark : {"? ", "! ", "~ ", "in ", "find ", "after "})
        if (line.startsWith(mark)) return line.mid(static_cast<qsizetype>(qstrlen(mark)));
    return {};
}

// A file of a folder is one input. A file by itself is a list: the statement of each line, and what stands behind its
// WHERE.
QByteArrayList inputs(const QString& path) {
    if (QFileInfo(path).isDir()) {
        QByteArrayList list;
        for (const QFileInfo& file : QDir(path).entryInfoList(QDir::Files, QDir::Name))
            list.append(contentOf(file.filePath()));
        return list;
    }
    QByteArrayList list;
    for (const QByteArray& line : contentOf(path).split('\n')) {
        const QByteArray statement = statementIn(line, path.endsWith(QStringLiteral(".sqltest")));
        if (statement.isEmpty()) continue;
        list.append(statement);
        const qsizetype where = statement.indexOf("WHERE ");
        if (where >= 0) list.append(statement.mid(where + 6));
    }
    return list;
}

class Mutator {
public:
    Mutator(quint64 seed, const QByteArrayList& seeds, const QByteArrayList& words)
        : random_(seed)
        , seeds_(seeds)
        , words_(words) {}

    QByteArray next() {
        QByteArray text = oneOf(!accepted_.isEmpty() && below(4) > 0 ? accepted_ : seeds_);
        for (qsizetype count = 1 + below(3); count > 0; --count)
            mutate(text);
        return text.left(longestInput);
    }

    void addAccepted(const QByteArray& input) { accepted_.append(input); }

private:
    void mutate(QByteArray& text) {
        const qsizetype at = below(text.size() + 1), length = below(std::min<qsizetype>(20, text.size() - at) + 1);
        switch (below(7)) {
        case 0: text.insert(at, ' ' + oneOf(words_) + ' '); break;
        case 1: text.replace(at, length, oneOf(words_)); break;
        case 2: text.remove(at, length); break;
        case 3: text.insert(at, text.mid(at, length)); break;
        case 4: text.insert(at, static_cast<char>(below(256))); break;
        case 5: replaceWord(text, at); break;
        default: {
            const QByteArray other = oneOf(seeds_);
            text = text.left(at) + other.mid(below(other.size() + 1));
        }
        }
    }

    void replaceWord(QByteArray& text, qsizetype at) {
        const qsizetype begin = text.lastIndexOf(' ', at) + 1;
        const qsizetype end = text.indexOf(' ', begin);
        text.replace(begin, (end < 0 ? text.size() : end) - begin, oneOf(words_));
    }

    qsizetype below(qsizetype count) { return static_cast<qsizetype>(random_() % static_cast<quint64>(count)); }
    const QByteArray& oneOf(const QByteArrayList& list) { return list[below(list.size())]; }

    std::mt19937_64 random_;
    const QByteArrayList& seeds_;
    QByteArrayList accepted_;
    const QByteArrayList& words_;
};

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) return 2;
    const QByteArrayList words = dictionary(QFile::decodeName(argv[1]));
    const quint64 seed = qEnvironmentVariableIsSet("MKL_SEED") ? qEnvironmentVariable("MKL_SEED").toULongLong() : 1;
    const qint64 count = QByteArray(argv[2]).toLongLong() * (qEnvironmentVariableIsSet("MKL_FULL") ? 20 : 1);
    QByteArrayList seeds;
    for (int i = 3; i < argc; ++i)
        seeds += inputs(QFile::decodeName(argv[i]));
    std::printf("%lld inputs, then %lld mutations of seed %llu\n", static_cast<long long>(seeds.size()),
                static_cast<long long>(count), static_cast<unsigned long long>(seed));
    std::fflush(stdout);
    Noted noted(QFileInfo(QFile::decodeName(argv[0])).fileName() + QStringLiteral(".input"));
    Mutator mutator(seed, seeds, words);
    qint64 accepted = 0;
    const auto run = [&](const QByteArray& input) {
        if (!noted.run(input)) return;
        mutator.addAccepted(input);
        ++accepted;
    };
    for (const QByteArray& input : seeds)
        run(input);
    for (qint64 i = 0; i < count; ++i)
        run(mutator.next());
    std::printf("%lld of them got through to the end\n", static_cast<long long>(accepted));
    return accepted > count / 50 ? 0 : 1; // else the seeds do not fit the target any more
}
