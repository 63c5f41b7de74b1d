#include "core/ErrorHandler.h"

#include "core/ErrorFrame.h"
#include "support/Printing.h"
#include "support/RecordingErrorHandler.h"
#include "support/ScriptedAsker.h"

using namespace Qt::StringLiterals;
using namespace mkl;

namespace {

class ErrorHandlerTest : public testing::Test {
protected:
    ErrorHandlerTest() {
        handler->ErrorContext().fill(u"Auftrag"_s, ErrorContext::ControlMode, currentError(), u"ArtCatBrowser"_s);
    }
    const MessageBox& box() const { return asker.shown.constLast(); }

    ScriptedAsker asker;
    Ref<ErrorHandler> handler = newErrorHandler();
    ErrorFrame frame{handler};
};

} // namespace

TEST_F(ErrorHandlerTest, ShowsTheCurrentErrorWithTheProcedure) {
    frame.reader(u"Populate"_s, [] { throwError(3075, {u"a="_s}); });
    EXPECT_EQ(
        box().text,
        u"Es ist ein Fehler aufgetreten:\nSyntaxfehler im Ausdruck: a=\n\nFehler Nr.: 3075\nProzedur: Populate"_s);
    EXPECT_EQ(box().flags, vbCritical);
    EXPECT_EQ(box().caption, u"Auftrag"_s);
}

TEST_F(ErrorHandlerTest, CodeZeroShowsClassAndProcedure) {
    frame.function(
        u"NewID"_s, []() -> Long { throwError(err::ObjectNotSet); }, -1);
    EXPECT_TRUE(box().text.endsWith(u"Fehler Nr.: 91\nProzedur: ArtCatBrowser.NewID"_s));
}

TEST_F(ErrorHandlerTest, ACodeShowsItsText) {
    handler->ReportError(-1072, {}, {});
    EXPECT_EQ(box().text,
              u"Der Datensatz wurde nicht gefunden. Er wurde möglicherweise von einem anderen Benutzer gelöscht."_s);
    EXPECT_EQ(box().flags, vbExclamation);

    handler->ReportError(-1084, {}, {}, u"Einzelheiten"_s, vbInformation, u"Handel & %2"_s, u"EUR"_s);
    EXPECT_EQ(box().text,
              u"Für die Preisgruppe 'Handel & %2' sind in der Währung 'EUR' keine Preislisten vorhanden."_s);
    EXPECT_EQ(box().detail, u"Einzelheiten"_s);
    EXPECT_EQ(box().flags, vbInformation);
}

TEST_F(ErrorHandlerTest, MessageTextTakesValues) {
    EXPECT_EQ(handler->MessageText(1024, 3, 12), u"Position 3 und Position 12 vertauschen"_s);
    EXPECT_EQ(handler->MessageText(1045, u"Nut & Feder"_s), u"Vor der Kategorie 'Nut & Feder'"_s);
    EXPECT_EQ(handler->MessageText(1056), u"Die Suche wurde abgebrochen."_s);
}

TEST_F(ErrorHandlerTest, AskUserGivesTheAnswer) {
    asker.answers = {vbNo};
    EXPECT_EQ(handler->AskUser(u"Kopieren?"_s, vbYesNo | vbQuestion), vbNo);
    EXPECT_EQ(box().text, u"Kopieren?"_s);
    EXPECT_EQ(box().flags, 36);
    EXPECT_EQ(box().caption, u"Auftrag"_s);
}

TEST(ErrorHandler, WithoutContextFailsItself) {
    const ScriptedAsker asker;
    EXPECT_EQ(errorOf([] { newErrorHandler()->ReportProcError(u"Populate"_s); }), err::ObjectNotSet);
    EXPECT_TRUE(asker.shown.isEmpty());
}

TEST(ErrorHandler, AnotherOneCanBePutInItsPlace) {
    const auto recorder = makeRef<RecordingErrorHandler>();
    const ErrorHandlerFactory former = setErrorHandlerFactory([&] { return recorder; });
    const Ref<ErrorHandler> made = newErrorHandler();
    setErrorHandlerFactory(former);
    EXPECT_EQ(made.get(), recorder.get());
    EXPECT_NE(newErrorHandler().get(), recorder.get());
}

TEST(ErrorContext, KeepsWhatItWasFilledWith) {
    ErrorContext context;
    context.fill(u"Auftrag"_s, ErrorContext::ControlMode, currentError(), u"ArtCatBrowser"_s);
    EXPECT_EQ(context.Application(), u"Auftrag"_s);
    EXPECT_EQ(context.Mode(), 2);
    EXPECT_EQ(context.ClassName(), u"ArtCatBrowser"_s);
    EXPECT_EQ(&context.Err(), &currentError());
}
