#include "nurvex7/presentation/node_draw_info.h"

#include "nurvex7/model/node.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/platform/tamsel7/painter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace nurvex7 {
namespace {

/// `max_caption_chars` and the two blanks that stand around a caption; never negative.
std::size_t _widest(int max_caption_chars) {
    return static_cast<std::size_t>(std::max<std::int64_t>(0, std::int64_t{max_caption_chars} + 2));
}

/// The text that a node is made wide enough for.
///
/// Deliberate: a caption of just the greatest length measures two characters wider than a longer
/// one, which is cut before it is measured and not padded.
std::string _text_to_fit(std::string caption, std::size_t widest) {
    if (caption.empty()) {
        caption.assign(5, ' ');
    }
    if (caption.size() <= widest) {
        caption.append(2, ' ');
    } else {
        caption.resize(widest);
    }
    return caption;
}

/// The caption cut by `keep`, the letters that are left over beside three full stops.
std::string _cut(const std::string& caption, int keep) {
    if (keep >= 1) {
        return caption.substr(0, static_cast<std::size_t>(keep)) + "...";
    }
    return std::string(static_cast<std::size_t>(std::max(0, keep + 3)), '.');
}

} // namespace

tamsel7::size<double> CNodeDrawInfo::measure(const std::string& text) {
    return painter->GetTextSize(text, nullptr, -1, true, true);
}

void CNodeDrawInfo::SetScaledFont() {
    if (painter == nullptr || (zoom >= 0.9 && zoom <= 1.1)) {
        return;
    }
    tamsel7::font scaled = node_font;
    scaled.size = static_cast<int>(node_font.size * zoom);
    painter->SetFont(scaled);
}

tamsel7::size<double> CNodeDrawInfo::GetSizeByCaption(Node node) {
    if (painter == nullptr) {
        return {};
    }
    SetScaledFont();
    const std::size_t widest = _widest(max_caption_chars);
    const tamsel7::size<double> text =
        measure(fixed_width ? std::string(widest, ' ') : _text_to_fit(node.GetCaption(), widest));
    return {text.width, text.height * 1.5};
}

std::string CNodeDrawInfo::GetTruncatedCaption(Node node) {
    if (painter == nullptr) {
        return {};
    }
    const double limit = GetSizeByCaption(node).width;
    const std::string caption = node.GetCaption();
    const double width = measure(caption).width;
    if (caption.empty()) {
        // Deliberate: painters that note what they measure see this text, though nothing here
        // needs its width.
        measure(" - ");
        return caption;
    }
    const int length = static_cast<int>(caption.size());
    const double per_char = width / length;
    const double text_width = length * per_char;
    if (!(text_width > limit)) {
        return caption;
    }
    int shift = static_cast<int>((limit - text_width) / per_char);
    while ((length + shift + 1) * per_char > limit) {
        --shift;
    }
    return _cut(caption, length - 3 + shift);
}

SizeAndOrigin size_with_band(Node node, tamsel7::size<double> band, tamsel7::size<double> inner) {
    const tamsel7::point<double> corner = node.GetPosition();
    return {{std::max(inner.width, band.width), band.height + inner.height},
            {corner.x, corner.y + band.height}};
}

} // namespace nurvex7
