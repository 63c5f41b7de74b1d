#include "Sites.h"
#include "support/Printing.h"

using namespace mkl;
using namespace Qt::StringLiterals;

TEST(Replicas, aFirstTry) {
    Sites sites(2, {u"INSERT INTO ARTIKEL ([Artikel-Schlüssel], [Artikelname]) VALUES (1, 'Äpfel')"_s,
                    u"INSERT INTO [ARTIKEL/PREISE] ([Artikel-Schlüssel]) VALUES (1)"_s});
    EXPECT_TRUE(sites.becomeEqual());
    std::printf("%s\n", qPrintable(sites[1].rows()));
}
