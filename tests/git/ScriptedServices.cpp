#include "ScriptedServices.h"

#include <gtest/gtest.h>

#include <utility>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

template<typename Answer>
Answer next(std::list<Answer> &answers, const QStringList &question)
{
    if (answers.empty()) {
        ADD_FAILURE() << "no answer to: " << qPrintable(question.join(u' '));
        return failure(PlatformError{u"no answer"_s});
    }
    Answer answer = std::move(answers.front());
    answers.pop_front();
    return answer;
}

} // namespace

FakeProcessRunner::FakeProcessRunner(QuestionLog &log)
    : m_log(log)
{}

void FakeProcessRunner::answer(const QByteArray &output)
{
    m_answers.emplace_back(TextSlice::fromUtf8(output));
}

void FakeProcessRunner::fail(const ProcessFailure &error)
{
    m_answers.emplace_back(failure(error));
}

Result<TextSlice, ProcessFailure> FakeProcessRunner::run(const QString &command,
                                                         const QStringList &arguments,
                                                         const QUrl &directory) const
{
    const QStringList question = QStringList{command} + arguments + QStringList{directory.path()};
    m_log.append(question);
    return next(m_answers, question);
}

FakeFileReader::FakeFileReader(QuestionLog &log)
    : m_log(log)
{}

void FakeFileReader::answer(const QByteArray &bytes)
{
    m_answers.emplace_back(bytes);
}

void FakeFileReader::fail(const QString &message)
{
    m_answers.emplace_back(failure(PlatformError{message}));
}

Result<QByteArray, PlatformError> FakeFileReader::read(const QUrl &file,
                                                       std::int64_t maxBytes) const
{
    const QStringList question{u"read"_s, file.toLocalFile(), QString::number(maxBytes)};
    m_log.append(question);
    return next(m_answers, question);
}

} // namespace vantrel::test
