#pragma once

#include "views/PanesSizes.h"

#include <QColor>
#include <QFont>

#include <array>

class QObject;

namespace vantrel {

/// What the code panes are drawn with.
struct PanesTheme
{
    /// Reads the properties of the theme that QML holds, under their names there.
    static PanesTheme of(const QObject &theme);

    QColor ink{};
    QColor line{};
    QColor selectedLine{};
    QColor card{};
    QColor head{};
    QColor selectedHead{};
    QColor mark{};
    // Each for the kinds of line in their order: context, addition, deletion, filler.
    std::array<QColor, 4> cell{};
    std::array<QColor, 4> gutter{};
    std::array<QColor, 4> number{};
    QColor selectedCell{};
    QColor selectedGutter{};
    QColor selection{};
    QFont codeFont{};
    QFont numberFont{};
    PanesSizes sizes{};
    /// In milliseconds, while a selection is dragged beyond an edge.
    int dragScrollInterval = 1;
};

} // namespace vantrel
