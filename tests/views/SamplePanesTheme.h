#pragma once

#include "views/PanesSizes.h"

class QObject;

namespace vantrel::test {

/// Gives a theme the sizes of the code panes and fonts that the machine has.
void fillSizesAndFonts(QObject &theme);

/// What is read of such a theme.
PanesSizes samplePanesSizes();

} // namespace vantrel::test
