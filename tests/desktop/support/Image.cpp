#include "Image.h"

#include "TempDirectory.h"

#include <stdexcept>

#include <zlib.h>

namespace orrivane::e2e {

namespace {

void appendNumber(std::string& out, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        out.push_back(static_cast<char>((value >> shift) & 0xff));
    }
}

void appendChunk(std::string& out, const std::string& type, const std::string& data) {
    appendNumber(out, static_cast<std::uint32_t>(data.size()));
    const std::string body = type + data;
    out += body;
    appendNumber(out,
                 static_cast<std::uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(body.data()),
                                                  static_cast<uInt>(body.size()))));
}

/// Every row begins with its filter, which is always "none".
std::string scanlines(const Image& image) {
    std::string rows;
    rows.reserve(image.pixels.size() * 4 + static_cast<std::size_t>(image.height));
    for (int y = 0; y < image.height; ++y) {
        rows.push_back(0);
        for (int x = 0; x < image.width; ++x) {
            const std::uint32_t pixel = image.at(x, y);
            for (int shift : {16, 8, 0, 24}) {
                rows.push_back(static_cast<char>((pixel >> shift) & 0xff));
            }
        }
    }
    return rows;
}

std::string deflated(const std::string& data) {
    uLongf size = compressBound(static_cast<uLong>(data.size()));
    std::string result(size, '\0');
    const int status = compress2(reinterpret_cast<Bytef*>(result.data()), &size,
                                 reinterpret_cast<const Bytef*>(data.data()),
                                 static_cast<uLong>(data.size()), Z_BEST_SPEED);
    if (status != Z_OK) {
        throw std::runtime_error("cannot compress an image");
    }
    result.resize(size);
    return result;
}

} // namespace

Image Image::crop(const PixelRect& area) const {
    const PixelRect part = area.intersection({0, 0, width, height});
    Image result{part.width, part.height, {}};
    for (int y = part.y; y < part.bottom(); ++y) {
        for (int x = part.x; x < part.right(); ++x) {
            result.pixels.push_back(at(x, y));
        }
    }
    return result;
}

void writePng(const std::string& path, const Image& image) {
    std::string header;
    appendNumber(header, static_cast<std::uint32_t>(image.width));
    appendNumber(header, static_cast<std::uint32_t>(image.height));
    // 8 bits a channel, colour with alpha, the only compression, filter and no interlacing.
    header += std::string("\x08\x06\x00\x00\x00", 5);
    std::string file = "\x89PNG\r\n\x1a\n";
    appendChunk(file, "IHDR", header);
    appendChunk(file, "IDAT", deflated(scanlines(image)));
    appendChunk(file, "IEND", "");
    writeFile(path, file);
}

} // namespace orrivane::e2e
