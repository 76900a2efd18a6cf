#include <linux/x11/PixelReader.h>

#include <xcb/composite.h>

#include <bit>
#include <cstring>
#include <utility>
#include <vector>

namespace orrivane::x11 {

namespace {

constexpr std::uint32_t opaque = 0xff000000U;

std::uint32_t swapped(std::uint32_t value) {
    return (value >> 24U) | ((value >> 8U) & 0xff00U) | ((value << 8U) & 0xff0000U) |
           (value << 24U);
}

} // namespace

PixelReader::Read PixelReader::send(xcb_drawable_t drawable, const PixelRect& rect) {
    return {xcb_get_image(connection_.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, drawable,
                          static_cast<std::int16_t>(rect.x), static_cast<std::int16_t>(rect.y),
                          static_cast<std::uint16_t>(rect.width),
                          static_cast<std::uint16_t>(rect.height), ~0U),
            rect};
}

PixelReader::Read PixelReader::sendRedirected(std::uint32_t window, int border, PixelRect rect) {
    rect.x += border; // the pixmap has the border in it
    rect.y += border;
    // The name is for the pixmap of this moment: the next resize gives the window another.
    const auto pixmap = xcb_generate_id(connection_.raw());
    connection_.ignore(xcb_composite_name_window_pixmap_checked(connection_.raw(), window, pixmap));
    const auto read = send(pixmap, rect);
    connection_.ignore(xcb_free_pixmap_checked(connection_.raw(), pixmap));
    return read;
}

std::shared_ptr<PixelImage> PixelReader::receive(const Read& read, Deadline until) {
    const auto reply = connection_.wait<xcb_get_image_reply_t>(read.image, until);
    if (!reply || (reply->depth != 24 && reply->depth != 32))
        return nullptr;
    const auto count =
        static_cast<std::size_t>(read.rect.width) * static_cast<std::size_t>(read.rect.height);
    if (static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) < count * 4)
        return nullptr;
    std::vector<std::uint32_t> pixels(count);
    std::memcpy(pixels.data(), xcb_get_image_data(reply.get()), count * 4);
    const bool serverIsLittle = connection_.setup().image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    const bool differs = serverIsLittle != (std::endian::native == std::endian::little);
    const std::uint32_t alpha = reply->depth == 24 ? opaque : 0;
    for (auto& pixel : pixels)
        pixel = (differs ? swapped(pixel) : pixel) | alpha;
    return std::make_shared<PixelImage>(read.rect.width, read.rect.height, std::move(pixels));
}

} // namespace orrivane::x11
