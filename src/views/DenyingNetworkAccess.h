#pragma once

#include <QQmlNetworkAccessManagerFactory>

namespace vantrel {

/// Gives the QML engine a network that answers nothing, so that no text or image in a view can
/// fetch anything. What the application itself asks goes another way.
class DenyingNetworkAccess final : public QQmlNetworkAccessManagerFactory
{
public:
    QNetworkAccessManager *create(QObject *parent) override;
};

} // namespace vantrel
