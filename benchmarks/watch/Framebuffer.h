#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace vantrel::bench {

/// The picture of a virtual X server's screen, which `Xvfb -fbdir` maps into a file: what it draws
/// is seen at once and without asking it.
class Framebuffer
{
public:
    /// Throws `std::runtime_error` when the file is no picture of 32 bits a pixel.
    explicit Framebuffer(const std::string &path);
    Framebuffer(const Framebuffer &) = delete;
    Framebuffer &operator=(const Framebuffer &) = delete;
    ~Framebuffer();

    [[nodiscard]] int height() const { return m_height; }

    /// The pixels of a line, as 0xrrggbb with eight bits above that mean nothing.
    [[nodiscard]] std::span<const std::uint32_t> line(int y) const;

private:
    void *m_file = nullptr;
    std::size_t m_fileSize = 0;
    const std::byte *m_pixels = nullptr;
    int m_width = 0;
    int m_height = 0;
    std::size_t m_bytesPerLine = 0;
};

} // namespace vantrel::bench
