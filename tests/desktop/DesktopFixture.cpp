#include "DesktopFixture.h"

namespace vantrel::test {

void DesktopFixture::TearDown()
{
    if (!isStarted() || HasFailure()) {
        return;
    }
    const ProcessRun ended = quit();
    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_EQ(ended.errors.toStdString(), awaitedErrors().toStdString());
}

void ReviewFixture::SetUp()
{
    const QString repository = makeDemoRepository(folder());
    writePreferences(m_provider.baseURL());
    start({repository}, QProcessEnvironment::systemEnvironment());
}

} // namespace vantrel::test
