#include "watch/Stripes.h"

#include <cstdlib>

namespace vantrel::bench {

namespace {

constexpr int darkBelow = 128;
constexpr int minStripeWidth = 4;
constexpr int minGapWidth = 2;
constexpr int minStripes = 5;
constexpr int tolerance = 1; ///< Pixels by which a font's rounding makes stripes differ.

bool isDark(std::uint32_t pixel)
{
    const std::uint32_t red = pixel >> 16 & 0xff;
    const std::uint32_t green = pixel >> 8 & 0xff;
    const std::uint32_t blue = pixel & 0xff;
    return (red * 77 + green * 150 + blue * 29) >> 8 < darkBelow;
}

bool isLike(int width, int other)
{
    return std::abs(width - other) <= tolerance;
}

} // namespace

void Sight::add(int y, std::span<const std::uint32_t> line)
{
    m_ink.clear();
    bool wasDark = false;
    const int width = int(line.size());
    for (int x = 0; x < width; ++x) {
        const bool isInk = isDark(line[std::size_t(x)]);
        if (isInk && !wasDark) {
            m_ink.push_back({x, x});
        }
        if (isInk) {
            m_ink.back().end = x + 1;
            ++inkPixels;
        }
        wasDark = isInk;
    }
    pixels += line.size();
    addSigns(y);
}

void Sight::addSigns(int y)
{
    for (std::size_t first = 0; first < m_ink.size();) {
        const int stripe = m_ink[first].end - m_ink[first].begin;
        std::size_t end = first + 1;
        if (stripe >= minStripeWidth && end < m_ink.size()) {
            const int gap = m_ink[end].begin - m_ink[first].end;
            while (gap >= minGapWidth && end < m_ink.size() &&
                   isLike(m_ink[end].begin - m_ink[end - 1].end, gap) &&
                   isLike(m_ink[end].end - m_ink[end].begin, stripe)) {
                ++end;
            }
        }
        const int count = int(end - first);
        if (count >= minStripes) {
            SignPlace &place = signs[count];
            place.x = (m_ink[first].begin + m_ink[end - 1].end) / 2;
            place.y = y;
            ++place.lineCount;
        }
        first = end;
    }
}

} // namespace vantrel::bench
