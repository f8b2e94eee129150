#include "views/IconProvider.h"

#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize defaultSize(16, 16);

} // namespace

IconProvider::IconProvider()
    : QQuickImageProvider(QQuickImageProvider::Pixmap)
{}

QPixmap IconProvider::requestPixmap(const QString &id, QSize *size, const QSize &requestedSize)
{
    const QString name = id.section(u'/', 0, 0);
    const QString color = id.section(u'/', 1, 1);
    QFile file(u":/qt/qml/Vantrel/icons/"_s + name + u".svg"_s);
    QByteArray drawing;
    if (file.open(QIODevice::ReadOnly)) {
        drawing = file.readAll().replace("currentColor", '#' + color.toLatin1());
    }
    QPixmap icon(requestedSize.isValid() ? requestedSize : defaultSize);
    icon.fill(Qt::transparent);
    QPainter painter(&icon);
    QSvgRenderer(drawing).render(&painter);
    *size = icon.size();
    return icon;
}

} // namespace vantrel
