#include "Keyboard.h"

#include "support/ProcessRun.h"

#include <gtest/gtest.h>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

void control(const QStringList &arguments)
{
    const ProcessRun ended = run(u"xdotool"_s, arguments);
    EXPECT_EQ(ended.exitCode, 0) << ended.errors.toStdString();
}

} // namespace

void activateWindow(const QString &title)
{
    control({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u'^' + title + u'$', u"windowfocus"_s});
}

void pressKey(const QString &combination)
{
    control({u"key"_s, combination});
}

void typeText(const QString &text)
{
    control({u"type"_s, text});
}

} // namespace vantrel::test
