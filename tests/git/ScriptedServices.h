#pragma once

#include "git/FileReading.h"
#include "git/ProcessRunning.h"

#include <QList>
#include <QStringList>

#include <list>

namespace vantrel::test {

/// What the fakes were asked, in the order in which it happened.
using QuestionLog = QList<QStringList>;

/// Answers with a script, in order, and logs each question as the command, its arguments and the
/// directory's path. A question without an answer fails the test.
class FakeProcessRunner final : public ProcessRunning
{
public:
    /// `log` must outlive the fake.
    explicit FakeProcessRunner(QuestionLog &log);

    void answer(const QByteArray &output);
    void fail(const ProcessFailure &error);

    [[nodiscard]] Result<TextSlice, ProcessFailure>
    run(const QString &command, const QStringList &arguments, const QUrl &directory) const override;

private:
    QuestionLog &m_log;
    mutable std::list<Result<TextSlice, ProcessFailure>> m_answers{};
};

/// As `FakeProcessRunner`; logs "read", the file's path and the limit.
class FakeFileReader final : public FileReading
{
public:
    /// `log` must outlive the fake.
    explicit FakeFileReader(QuestionLog &log);

    void answer(const QByteArray &bytes);
    void fail(const QString &message);

    [[nodiscard]] Result<QByteArray, PlatformError> read(const QUrl &file,
                                                         std::int64_t maxBytes) const override;

private:
    QuestionLog &m_log;
    mutable std::list<Result<QByteArray, PlatformError>> m_answers{};
};

} // namespace vantrel::test
