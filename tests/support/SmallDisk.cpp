#include "support/SmallDisk.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include <sched.h>
#include <sys/mount.h>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Gives this thread, and what it starts, mounts of its own that nobody else sees.
bool leaveOthersMounts()
{
    static const bool hasLeft = ::unshare(CLONE_NEWNS) == 0 &&
                                ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return hasLeft;
}

} // namespace

SmallDisk::SmallDisk(const QString &folder)
    : m_folder(folder)
{
    m_isThere = leaveOthersMounts() && QDir().mkpath(folder) &&
                ::mount("vantrel-test", QFile::encodeName(folder).constData(), "tmpfs", 0,
                        "size=64k,mode=700") == 0;
}

SmallDisk::~SmallDisk()
{
    if (m_isThere) {
        EXPECT_EQ(::umount2(QFile::encodeName(m_folder).constData(), MNT_DETACH), 0);
    }
}

void SmallDisk::fill()
{
    QFile file(filling());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (file.write(QByteArray(1024, 'x')) > 0) {
    }
}

void SmallDisk::makeRoom()
{
    ASSERT_TRUE(QFile::remove(filling()));
}

void SmallDisk::setReadOnly(bool isReadOnly)
{
    constexpr unsigned long changed = MS_REMOUNT;
    constexpr unsigned long readOnly = MS_REMOUNT | MS_RDONLY;
    ASSERT_EQ(::mount(nullptr, QFile::encodeName(m_folder).constData(), nullptr,
                      isReadOnly ? readOnly : changed, nullptr),
              0);
}

QString SmallDisk::filling() const
{
    return m_folder + u"/filling"_s;
}

} // namespace vantrel::test
