#include "views/PanesTheme.h"

#include <QObject>
#include <QVariant>

namespace vantrel {

PanesTheme PanesTheme::of(const QObject &theme)
{
    const auto color = [&theme](const char *name) { return theme.property(name).value<QColor>(); };
    const auto font = [&theme](const char *name) { return theme.property(name).value<QFont>(); };
    const auto size = [&theme](const char *name) { return theme.property(name).toReal(); };
    PanesTheme read;
    read.ink = color("ink");
    read.line = color("line");
    read.selectedLine = color("accent");
    read.card = color("card");
    read.head = color("diffContextGutter");
    read.selectedHead = color("accentSoft");
    read.mark = color("inkTertiary");
    read.cell = {color("diffContext"), color("diffAdded"), color("diffDeleted"),
                 color("diffFiller")};
    read.gutter = {color("diffContextGutter"), color("diffAddedGutter"), color("diffDeletedGutter"),
                   color("diffFillerGutter")};
    read.number = {color("inkTertiary"), color("diffAddedInk"), color("diffDeletedInk"),
                   color("inkTertiary")};
    read.selectedCell = color("diffSelected");
    read.selectedGutter = color("diffSelectedGutter");
    read.selection = color("selection");
    read.codeFont = font("codeFont");
    read.numberFont = font("codeNumberFont");
    read.sizes.gap = size("spaceM");
    read.sizes.sideMargin = size("spaceM");
    read.sizes.border = size("hairlineWidth");
    read.sizes.cornerRadius = size("cardRadius");
    read.sizes.headHeight = size("cardHeadSize");
    read.sizes.rowHeight = size("codeRowSize");
    read.sizes.endHeight = size("cardEndSize");
    read.sizes.gutterWidth = size("gutterMinSize");
    read.sizes.gutterDigitWidth = size("gutterDigitSize");
    read.sizes.numberMargin = size("spaceS");
    read.sizes.signWidth = size("signColumnSize");
    read.sizes.textIndent = size("codeIndentSize");
    read.sizes.cutMarkRoom = size("cutMarkRoomSize");
    read.sizes.cutMarkMargin = size("cutMarkMarginSize");
    read.sizes.cutMarkWidth = size("cutMarkWidthSize");
    read.sizes.cutMarkHeight = size("cutMarkHeightSize");
    read.dragScrollInterval = theme.property("dragScrollDuration").toInt();
    return read;
}

} // namespace vantrel
