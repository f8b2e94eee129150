#pragma once

#include "platform/http/HttpLoading.h"
#include "platform/jobs/Job.h"

#include <QByteArray>

#include <memory>
#include <optional>
#include <ostream>

namespace vantrel::test {

/// What came of one request.
struct ExchangeResult
{
    std::optional<int> status{}; ///< Once the head has come.
    QByteArray body{};           ///< What has come so far.
    std::optional<PlatformError> error{};
    bool isOver = false;

    bool operator==(const ExchangeResult &) const = default;
};

void PrintTo(const ExchangeResult &result, std::ostream *out);

/// One request that a test runs beside itself. Destroying or cancelling it drops the request.
class HttpExchange
{
public:
    enum class Reading { wholeBody, headOnly };

    HttpExchange(HttpLoading &loader, HttpRequest request, Reading reading = Reading::wholeBody);

    [[nodiscard]] const ExchangeResult &result() const { return *m_result; }

    /// Runs the event loop until the head has come.
    void waitForHead() const;

    /// Where the answer leads to, while its body has not been read to its end.
    [[nodiscard]] QByteArray location() const;

    /// Reads the body of an exchange that was to read the head only.
    void readBody();

    void cancel();

    /// Runs the event loop until the exchange is over, and gives its result.
    const ExchangeResult &waitForEnd();

private:
    struct State : ExchangeResult
    {
        std::optional<HttpResponse> response{};
    };

    static Task<> run(HttpLoading *loader, HttpRequest request, Reading reading, State *state);
    static Task<> read(State *state);

    std::unique_ptr<State> m_result = std::make_unique<State>();
    Job m_job;
};

} // namespace vantrel::test
