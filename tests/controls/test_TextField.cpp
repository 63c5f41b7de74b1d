#include "controls/TextField.h"

#include "controls/TextBox.h"
#include "support/Printing.h"

#include <QApplication>
#include <QClipboard>
#include <QTest>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

class TextFieldTest : public ::testing::Test {
protected:
    TextFieldTest() {
        other.setFocus();
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        box.move(0, 50);
        box.setText(u"Zange"_s);
        field->setTextBox(&box);
    }

    QWidget window;
    TextBox other{&window};
    TextBox box{&window};
    Ref<TextField> field = makeRef<TextField>();
};

} // namespace

TEST_F(TextFieldTest, SelectsItsTextWhenTheFocusComes) {
    QTest::mouseClick(&box, Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(box.selectedText(), u"Zange"_s);
}

TEST_F(TextFieldTest, KeepsItsTextOnOneLine) {
    QApplication::clipboard()->setText(u"a\r\nb\nc\u2028d"_s);
    box.selectAll();
    box.paste();
    EXPECT_EQ(box.Text(), u"a b c d"_s);
}

TEST_F(TextFieldTest, EndsWithItsObject) {
    field.reset();
    QTest::mouseClick(&box, Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(box.selectedText(), QString());
}

TEST_F(TextFieldTest, MayBeBoundAnewAndOutliveItsBox) {
    {
        TextBox second(&window);
        field->setTextBox(&second);
        EXPECT_EQ(field->TextBox(), &second);
        box.setText(u"a\nb"_s);
        EXPECT_EQ(box.Text(), u"a\nb"_s);
    }
    EXPECT_EQ(field->TextBox(), nullptr);
    field->setTextBox(nullptr);
}

} // namespace mkl
