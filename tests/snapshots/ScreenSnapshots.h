#pragma once

#include "ai/config/AppAppearance.h"

#include <QDir>
#include <QImage>
#include <QList>
#include <QSize>
#include <QString>

#include <optional>

namespace vantrel::test {

/// One state of a screen, in one theme and size, whose picture is kept.
struct ScreenSnapshot
{
    QString state{};
    AppAppearance appearance = AppAppearance::light;
    QSize size{};
    QString sizeName{}; ///< Empty for the size that a window first has.

    [[nodiscard]] QString name() const;
    [[nodiscard]] QString fileName() const { return name() + QStringLiteral(".png"); }
};

/// All states in both themes, and one of each screen as narrow and as wide as it gets.
[[nodiscard]] QList<ScreenSnapshot> allScreenSnapshots();

/// The folder of the kept snapshots, in the sources.
[[nodiscard]] QDir keptFolder();

/// The whole picture of the window; null when the window could not be made.
[[nodiscard]] QImage takePicture(const ScreenSnapshot &screen);

/// A sentence when the picture differs from the kept snapshot. The picture, and another one where
/// the difference is marked, then lie below the build folder; the sentence says where.
[[nodiscard]] std::optional<QString> compareWithKept(const ScreenSnapshot &screen,
                                                     const QImage &picture);

/// Replaces all kept snapshots by what the screens look like now; whether all could be written.
[[nodiscard]] bool keepAll();

} // namespace vantrel::test
