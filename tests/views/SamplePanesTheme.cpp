#include "SamplePanesTheme.h"

#include "views/PanesTheme.h"

#include <QFontDatabase>
#include <QList>
#include <QObject>
#include <QPair>
#include <QVariant>

namespace vantrel::test {

void fillSizesAndFonts(QObject &theme)
{
    const QList<QPair<const char *, qreal>> sizes = {{"spaceM", 12},
                                                     {"spaceS", 8},
                                                     {"hairlineWidth", 1},
                                                     {"cardRadius", 8},
                                                     {"cardHeadSize", 32},
                                                     {"codeRowSize", 20},
                                                     {"cardEndSize", 6},
                                                     {"gutterMinSize", 44},
                                                     {"gutterDigitSize", 7},
                                                     {"signColumnSize", 18},
                                                     {"codeIndentSize", 3},
                                                     {"cutMarkRoomSize", 14},
                                                     {"cutMarkMarginSize", 7.5},
                                                     {"cutMarkWidthSize", 2.5},
                                                     {"cutMarkHeightSize", 2.75},
                                                     {"dragScrollDuration", 30}};
    for (const auto &[name, size] : sizes) {
        theme.setProperty(name, size);
    }
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(12);
    theme.setProperty("codeFont", font);
    theme.setProperty("codeNumberFont", font);
}

PanesSizes samplePanesSizes()
{
    QObject theme;
    fillSizesAndFonts(theme);
    return PanesTheme::of(theme).sizes;
}

} // namespace vantrel::test
