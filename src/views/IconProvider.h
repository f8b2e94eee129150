#pragma once

#include <QQuickImageProvider>

namespace vantrel {

/// The icons in the colour that a view asks for: `image://icon/<name>/<rrggbb>`. The drawings use
/// the word "currentColor", which is replaced before they are rendered. Thread: any.
class IconProvider final : public QQuickImageProvider
{
public:
    IconProvider();

    QPixmap requestPixmap(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace vantrel
