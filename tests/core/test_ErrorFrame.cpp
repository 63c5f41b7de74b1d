#include "core/ErrorFrame.h"

#include "support/Printing.h"
#include "support/RecordingErrorHandler.h"

#include <QScopeGuard>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace mkl;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

[[noreturn]] void fail(Long number) {
    throwError(number);
}

class ErrorFrameTest : public testing::Test {
protected:
    ErrorFrameTest() { handler->ErrorContext().fill({}, ErrorContext::ControlMode, currentError(), u"Control"_s); }

    Ref<RecordingErrorHandler> handler = makeRef<RecordingErrorHandler>();
    ErrorFrame frame{handler};
};

} // namespace

TEST_F(ErrorFrameTest, WithoutAFailureNothingIsReported) {
    int runs = 0;
    frame.reader(u"Populate"_s, [&] { ++runs; });
    frame.boundary(u"Click"_s, [&] { ++runs; });
    EXPECT_EQ(frame.function(
                  u"Count"_s, [&] { return ++runs; }, -1),
              3);
    EXPECT_THAT(handler->reports, IsEmpty());
}

TEST_F(ErrorFrameTest, ReaderReportsWithItsNameAndGoesOn) {
    frame.reader(u"Populate"_s, [] { fail(91); });
    EXPECT_THAT(handler->reports, ElementsAre(ErrorReport{0, 91, {}, u"Populate"_s}));
}

TEST_F(ErrorFrameTest, FunctionReportsWithClassAndGivesItsDefault) {
    const auto result = frame.function(
        u"NewID"_s, []() -> Long { fail(3021); }, -1);
    EXPECT_EQ(result, -1);
    EXPECT_THAT(handler->reports, ElementsAre(ErrorReport{0, 3021, u"Control"_s, u"NewID"_s}));
}

TEST_F(ErrorFrameTest, TidyingFollowsTheReport) {
    QStringList order;
    const auto procedure = [&] {
        const auto tidy = qScopeGuard([&] { order.append(u"tidied after %1 report"_s.arg(handler->reports.size())); });
        frame.reader(u"PopulateLV"_s, [&] {
            order.append(u"read"_s);
            fail(3061);
        });
    };
    procedure();
    EXPECT_THAT(order, ElementsAre(u"read"_s, u"tidied after 1 report"_s));
}

TEST_F(ErrorFrameTest, TheInnermostFrameReports) {
    frame.reader(u"Outer"_s, [&] {
        frame.reader(u"Inner"_s, [] { fail(5); });
        fail(6);
    });
    EXPECT_THAT(handler->reports, ElementsAre(ErrorReport{0, 5, {}, u"Inner"_s}, ErrorReport{0, 6, {}, u"Outer"_s}));
}

TEST_F(ErrorFrameTest, TheCurrentErrorEndsWithItsHandling) {
    frame.reader(u"Populate"_s, [] { fail(13); });
    EXPECT_EQ(currentError().Number(), 0);
    EXPECT_EQ(currentError().Description(), QString());
}

namespace {

class FailingErrorHandler final : public ErrorHandler {
public:
    void ReportProcError(const QString&) override { fail(7); }
    void ReportError(Long, const QString&, const QString&, const QString&, Long, const Variant&,
                     const Variant&) override {
        fail(7);
    }
};

} // namespace

TEST(ErrorFrame, AFailingReportGoesUp) {
    const ErrorFrame frame(makeRef<FailingErrorHandler>());
    EXPECT_EQ(errorOf([&] { frame.reader(u"Populate"_s, [] { fail(5); }); }), 7);
    EXPECT_EQ(errorOf([&] {
                  frame.function(
                      u"NewID"_s, []() -> Long { fail(5); }, -1);
              }),
              7);
    EXPECT_EQ(currentError().Number(), 0);
}

TEST(ErrorFrame, AFailingReportEndsAtTheBoundary) {
    const ErrorFrame frame(makeRef<FailingErrorHandler>());
    EXPECT_EQ(errorOf([&] { frame.boundary(u"Click"_s, [] { fail(5); }); }), 0);
}

TEST(ErrorFrame, WithoutAnErrorObjectTheFailureGoesUpAs91) {
    ErrorFrame frame(makeRef<RecordingErrorHandler>());
    frame.release();
    EXPECT_EQ(errorOf([&] { frame.reader(u"Populate"_s, [] { fail(5); }); }), err::ObjectNotSet);
}

namespace {

// Closes the control, and with it the frame, while the message shows.
class ClosingErrorHandler final : public ErrorHandler {
public:
    explicit ClosingErrorHandler(std::function<void()> close)
        : close_(std::move(close)) {}
    void ReportProcError(const QString&) override {
        close_();
        number_ = currentError().Number();
    }

private:
    Long number_ = 0; // written last: the object must still be there
    std::function<void()> close_;
};

} // namespace

TEST(ErrorFrame, MayEndWhileItsMessageShows) {
    std::unique_ptr<ErrorFrame> frame;
    frame = std::make_unique<ErrorFrame>(makeRef<ClosingErrorHandler>([&] { frame.reset(); }));
    frame->reader(u"Populate"_s, [] { fail(5); });
    EXPECT_FALSE(frame);
    EXPECT_EQ(currentError().Number(), 0);
}

TEST(Quietly, RunsEveryStep) {
    QList<int> steps;
    ErrorFrame::quietly([&] { steps.append(1); }, [] { fail(5); }, [&] { steps.append(3); });
    EXPECT_THAT(steps, ElementsAre(1, 3));
}

TEST(ResumeNext, GoesOnBehindTheFailedStep) {
    QList<Long> asked;
    QList<int> steps;
    const auto goOn = [&] {
        asked.append(currentError().Number());
        return true;
    };
    const bool toTheEnd = ErrorFrame::resumeNext(
        goOn, [&] { steps.append(1); }, [] { fail(35602); }, [] { fail(91); }, [&] { steps.append(4); });
    EXPECT_TRUE(toTheEnd);
    EXPECT_THAT(asked, ElementsAre(35602, 91));
    EXPECT_THAT(steps, ElementsAre(1, 4));
    EXPECT_EQ(currentError().Number(), 0);
}

TEST(ResumeNext, EndsWhenToldSo) {
    QList<int> steps;
    const bool toTheEnd = ErrorFrame::resumeNext([] { return false; }, [&] { steps.append(1); }, [] { fail(5); },
                                                 [&] { steps.append(3); });
    EXPECT_FALSE(toTheEnd);
    EXPECT_THAT(steps, ElementsAre(1));
}

TEST(ResumeNext, AFailureOfTheQuestionGoesUp) {
    EXPECT_EQ(errorOf([] { ErrorFrame::resumeNext([]() -> bool { fail(7); }, [] { fail(5); }); }), 7);
}
