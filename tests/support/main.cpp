// One main for all test programs: widgets need an application object, and it must outlive every test.
#include "support/LeftOutTests.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (!mkl::leftOutTests().isEmpty()) GTEST_FLAG_SET(filter, "*-" + mkl::leftOutTests().toStdString());
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
