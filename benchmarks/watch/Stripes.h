#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <vector>

namespace vantrel::bench {

/// Where a sign is on the screen, in pixels.
struct SignPlace
{
    int x = 0;
    int y = 0;
    int lineCount = 0; ///< Of those that were looked at.
};

/// What can be told of a picture without knowing the program that drew it.
struct Sight
{
    std::size_t inkPixels = 0; ///< Dark ones.
    std::size_t pixels = 0;

    /// Rows of stripes by the number of stripes. Full blocks (U+2588) apart by spaces are that in
    /// any font; nothing else on a screen looks alike, so a text that holds some is found where it
    /// is shown.
    std::map<int, SignPlace> signs{};

    void add(int y, std::span<const std::uint32_t> line);

private:
    struct Run
    {
        int begin = 0;
        int end = 0;
    };

    void addSigns(int y);

    std::vector<Run> m_ink{}; ///< The dark runs of the line that is looked at.
};

} // namespace vantrel::bench
