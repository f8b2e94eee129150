#include "persistence/FakeSecretItems.h"

#include <gtest/gtest.h>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

template<typename Answer>
Answer take(std::deque<Answer> &answers, const QString &call)
{
    if (answers.empty()) {
        ADD_FAILURE() << "unscripted: " << qPrintable(call);
        return {};
    }
    Answer answer = std::move(answers.front());
    answers.pop_front();
    return answer;
}

} // namespace

FakeSecretItems::FakeSecretItems(SecretItemsScript &script)
    : m_script(script)
{}

SecretItems::Match FakeSecretItems::copyMatching(const QString &service, const QString &account)
{
    m_script.calls.append(u"copyMatching %1 %2"_s.arg(service, account));
    return take(m_script.matches, m_script.calls.last());
}

std::int32_t FakeSecretItems::add(const QString &service, const QString &account,
                                  const QByteArray &secret)
{
    m_script.calls.append(u"add %1 %2"_s.arg(service, account));
    m_script.secrets.append(secret);
    return take(m_script.addStatuses, m_script.calls.last());
}

std::int32_t FakeSecretItems::remove(const QString &service, const QString &account)
{
    m_script.calls.append(u"remove %1 %2"_s.arg(service, account));
    return take(m_script.removeStatuses, m_script.calls.last());
}

} // namespace vantrel::test
