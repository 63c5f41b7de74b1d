#include "apps/mklart/QueryCommand.h"

#include "apps/mklart/Console.h"
#include "apps/mklart/JsonText.h"
#include "apps/mklart/ServerAccess.h"
#include "base/RunTimeError.h"

#include <iostream>
#include <string>

namespace mkl {

using namespace Qt::StringLiterals;

namespace {

constexpr Long longestWaitSeconds = 3600;

dao::OpenOptions openOptions(const Invocation& call) {
    dao::OpenOptions options;
    options.readOnly = call.has(u"read-only"_s);
    const Long seconds = call.number(u"wait"_s, options.busyTimeoutMilliseconds / 1000, 0, longestWaitSeconds);
    options.busyTimeoutMilliseconds = seconds * 1000;
    return options;
}

void printError(const RunTimeError& error) {
    printLine(u"{\"error\": {\"number\": "_s + QString::number(error.number()) + u", \"description\": "_s +
              jsonString(error.description()) + u"}}"_s);
}

/// False for a failure that was printed. What fails since nobody reads the output any more is not held back.
template<class Action>
bool succeeds(bool json, Action&& action) {
    try {
        action();
    } catch (const RunTimeError& error) {
        if (!json || outputIsGone()) throw;
        printError(error);
        return false;
    }
    return true;
}

QString decoded(std::string line) {
    if (line.ends_with('\r')) line.pop_back();
    const QByteArrayView utf8(line.data(), static_cast<qsizetype>(line.size()));
    if (!utf8.isValidUtf8()) throw RunTimeError(err::InvalidArgument, text(TextId::ToolNoUtf8));
    return QString::fromUtf8(utf8);
}

bool answerLines(const Answer& answer) {
    bool allSucceeded = true;
    for (std::string line; std::getline(std::cin, line);) {
        allSucceeded = succeeds(true, [&] { answer(decoded(line), true); }) && allSucceeded;
        flushOutput();
    }
    return allSucceeded;
}

} // namespace

QueryFile::QueryFile(const Invocation& call)
    : workspace_(dao::DBEngine::CreateWorkspace())
    , database_(workspace_->OpenDatabase(call.argument(0), accessTo(call.argument(0), openOptions(call)))) {}

QList<Option> queryFileOptions() {
    return {{u"read-only"_s, {}, TextId::ToolHelpReadOnly}, {u"wait"_s, u"SECONDS"_s, TextId::ToolHelpWait}};
}

int runQuery(const Invocation& call, const QString& text, const std::function<Answer()>& prepare) {
    const bool lines = text == u"-";
    const bool json = lines || call.has(u"json"_s);
    bool allSucceeded = true;
    const bool prepared = succeeds(json, [&] {
        const Answer answer = prepare();
        if (lines)
            allSucceeded = answerLines(answer);
        else
            answer(text, json);
    });
    return prepared && allSucceeded ? Success : Failure;
}

} // namespace mkl
