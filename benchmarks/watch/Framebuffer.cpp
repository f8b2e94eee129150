#include "watch/Framebuffer.h"

#include <array>
#include <cstring>
#include <endian.h>
#include <fcntl.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vantrel::bench {

namespace {

/// The header of an X window dump: words of 32 bits, most significant byte first.
enum HeaderWord : std::size_t {
    headerSizeWord = 0,
    widthWord = 4,
    heightWord = 5,
    bitsPerPixelWord = 11,
    bytesPerLineWord = 12,
    colorCountWord = 19,
    headerWordCount = 25,
};

constexpr std::size_t bytesPerColor = 12;

} // namespace

Framebuffer::Framebuffer(const std::string &path)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat state = {};
    if (file < 0 || ::fstat(file, &state) != 0) {
        throw std::runtime_error("cannot open " + path);
    }
    m_fileSize = std::size_t(state.st_size);
    m_file = ::mmap(nullptr, m_fileSize, PROT_READ, MAP_SHARED, file, 0);
    ::close(file);
    if (m_file == MAP_FAILED || m_fileSize < headerWordCount * sizeof(std::uint32_t)) {
        throw std::runtime_error("cannot map " + path);
    }

    std::array<std::uint32_t, headerWordCount> words{};
    std::memcpy(words.data(), m_file, sizeof(words));
    for (std::uint32_t &word : words) {
        word = be32toh(word);
    }
    if (words[bitsPerPixelWord] != 32) {
        throw std::runtime_error(path + " is not of 32 bits a pixel");
    }
    m_width = int(words[widthWord]);
    m_height = int(words[heightWord]);
    m_bytesPerLine = words[bytesPerLineWord];
    m_pixels = static_cast<const std::byte *>(m_file) + words[headerSizeWord] +
               bytesPerColor * words[colorCountWord];
}

Framebuffer::~Framebuffer()
{
    ::munmap(m_file, m_fileSize);
}

std::span<const std::uint32_t> Framebuffer::line(int y) const
{
    const std::byte *const first = m_pixels + std::size_t(y) * m_bytesPerLine;
    return {reinterpret_cast<const std::uint32_t *>(first), std::size_t(m_width)};
}

} // namespace vantrel::bench
