// mklmdbread FILE de|en: writes the rows of an Access database to standard output, for the program that started it.
#include "base/RunTimeError.h"
#include "base/Texts.h"
#include "catalogue/RowStream.h"
#include "catalogue/mdb/MdbSource.h"

#include <QFile>
#include <cstdio>

int main(int argc, char** argv) {
    using namespace mkl;
    if (argc != 3) return 2;
    // The library's behaviour hangs on these; files are to be read the same way everywhere.
    qunsetenv("MDBICONV");
    qunsetenv("MDBOPTS");
    setTextLanguage(qstrcmp(argv[2], "en") == 0 ? Language::English : Language::German);

    QFile output;
    if (!output.open(stdout, QIODevice::WriteOnly)) return 1;
    RowStreamWriter writer(output);
    try {
        MdbSource(QString::fromLocal8Bit(argv[1])).readInto(writer);
        writer.finish();
    } catch (const RunTimeError& error) {
        writer.fail(error.number(), error.description());
        return 1;
    }
    return output.flush() ? 0 : 1;
}
