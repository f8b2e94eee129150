#include "StreamInput.h"

#include <random>

namespace vantrel::bench {

QByteArray eventStream()
{
    const QByteArray letters = R"(etaoinshrdlu mfwygpbvkxqjz,.()`-\n\")";
    std::mt19937 random(20'240'607);
    std::uniform_int_distribution<int> length(1, 20);
    std::uniform_int_distribution<qsizetype> letter(0, 28);
    QByteArray stream;
    for (int i = 0; i < chunkCount; ++i) {
        if (i % 500 == 0) {
            stream += ": keep-alive\n\n";
        }
        stream += R"(data: {"id":"chatcmpl-AbCdEfGhIjKlMnOpQrStUvWx","object":)"
                  R"("chat.completion.chunk","created":1791234567,"model":"gpt-6-luna",)"
                  R"("choices":[{"index":0,"delta":{"content":")";
        for (int left = length(random); left > 0; --left) {
            stream += letters[letter(random)];
        }
        stream += "\"},\"logprobs\":null,\"finish_reason\":null}]}\n\n";
    }
    return stream + "data: [DONE]\n\n";
}

} // namespace vantrel::bench
