#pragma once

#include <QString>

namespace vantrel::test {

/// A real file system of a few kilobytes, which a test can fill or make read-only. This thread
/// alone sees it, and the threads and processes that are started from here on. Only the superuser
/// may make one.
class SmallDisk
{
public:
    /// Makes it at `folder`, which is made, too.
    explicit SmallDisk(const QString &folder);
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;
    ~SmallDisk();

    /// False where the system did not let this process make it; the test cannot be run then.
    [[nodiscard]] bool isThere() const { return m_isThere; }

    /// Leaves no room for another byte, and makes room again.
    void fill();
    void makeRoom();

    void setReadOnly(bool isReadOnly);

private:
    [[nodiscard]] QString filling() const;

    QString m_folder;
    bool m_isThere = false;
};

} // namespace vantrel::test
