#pragma once

#include "platform/http/HttpLoading.h"
#include "platform/jobs/WaiterList.h"
#include "support/UpdateMaker.h"

#include <optional>

namespace vantrel::test {

/// A server with one version, without a network. What it has not been told to answer stays open
/// until it is. Thread: interface.
class FakeUpdateServer final : public HttpLoading
{
public:
    [[nodiscard]] UpdaterConfiguration configuration() const;

    /// The version that its feed offers, and what is new in it.
    void offer(const QString &version, const QString &notes);

    /// Answers with this status whatever is asked for.
    void refuse(int status);

    /// How much of the package comes, from 0 to 1; all of it by default.
    void setPackagePart(double part);

    Task<Result<HttpResponse, PlatformError>> load(HttpRequest request) override;

private:
    [[nodiscard]] QByteArray feed() const;
    HttpBody packageBody();

    UpdateMaker m_maker{};
    const QByteArray m_package = QByteArray(5'200'000, 'p');
    std::optional<QString> m_version{};
    QString m_notes{};
    std::optional<int> m_refusal{};
    double m_packagePart = 1;
    WaiterList m_changed{};
};

} // namespace vantrel::test
