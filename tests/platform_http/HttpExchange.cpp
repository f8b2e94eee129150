#include "platform_http/HttpExchange.h"

#include "support/Spin.h"

#include <utility>

namespace vantrel::test {

void PrintTo(const ExchangeResult &result, std::ostream *out)
{
    *out << "status " << result.status.value_or(0) << ", body \"" << result.body.constData()
         << "\", error \"" << (result.error ? qPrintable(result.error->message) : "none") << "\""
         << (result.isOver ? "" : ", not over");
}

HttpExchange::HttpExchange(HttpLoading &loader, HttpRequest request, Reading reading)
    : m_job(run(&loader, std::move(request), reading, m_result.get()))
{}

void HttpExchange::waitForHead() const
{
    spinUntil([this] { return m_result->response.has_value(); });
}

QByteArray HttpExchange::location() const
{
    return m_result->response->location;
}

void HttpExchange::readBody()
{
    m_job = Job(read(m_result.get()));
}

void HttpExchange::cancel()
{
    m_job.cancel();
    m_result->response.reset();
}

const ExchangeResult &HttpExchange::waitForEnd()
{
    spinUntil([this] { return m_result->isOver; });
    return *m_result;
}

Task<> HttpExchange::run(HttpLoading *loader, HttpRequest request, Reading reading, State *state)
{
    auto response = co_await loader->load(std::move(request));
    if (!response) {
        state->error = response.error();
        state->isOver = true;
        co_return;
    }
    state->status = response->status;
    state->response.emplace(std::move(*response));
    if (reading == Reading::wholeBody) {
        co_await read(state);
    }
}

Task<> HttpExchange::read(State *state)
{
    while (const auto block = co_await state->response->body.next()) {
        if (!*block) {
            state->error = block->error();
            break;
        }
        state->body.append(**block);
    }
    state->response.reset();
    state->isOver = true;
}

} // namespace vantrel::test
