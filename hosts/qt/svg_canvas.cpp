#include "hosts/qt/svg_canvas.h"

#include <QGradient>
#include <QPainterPath>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace nurvex7::qt {

namespace {

/// Outlines are written in whole numbers of this many units an em.
constexpr double EM_UNITS = 2048;

/// Two decimals by whole numbers, which takes a fraction of the time: much of a picture is numbers.
/// Empty where the number is too large for that, or so near the middle between two that it takes
/// all of its digits to tell which is next to it.
QByteArray short_number(double value) {
    const double hundredths = std::abs(value * 100);
    const double rounded = std::nearbyint(hundredths);
    constexpr double most = 1e12;
    constexpr double near_the_middle = 0.499;
    if (!(hundredths < most) || std::abs(hundredths - rounded) > near_the_middle) {
        return {};
    }
    const auto whole = static_cast<long long>(rounded);
    std::array<char, 24> text{};
    char* end = text.data();
    if (value < 0 && whole > 0) {
        *end++ = '-';
    }
    end = std::to_chars(end, text.data() + text.size(), whole / 100).ptr;
    const auto digit = [](long long d) { return static_cast<char>('0' + d); };
    if (whole % 100 != 0) {
        *end++ = '.';
        *end++ = digit(whole / 10 % 10);
    }
    if (whole % 10 != 0) {
        *end++ = digit(whole % 10);
    }
    return QByteArray(text.data(), end - text.data());
}

QByteArray number(double value, int decimals = 2) {
    QByteArray quick = decimals == 2 ? short_number(value) : QByteArray();
    if (!quick.isEmpty()) {
        return quick;
    }
    QByteArray text = QByteArray::number(value, 'f', decimals);
    if (text.contains('.')) {
        while (text.endsWith('0')) {
            text.chop(1);
        }
        if (text.endsWith('.')) {
            text.chop(1);
        }
    }
    return text == "-0" ? QByteArray("0") : text;
}

QByteArray attribute(const char* name, const QByteArray& value) {
    QByteArray text;
    text.reserve(static_cast<qsizetype>(std::strlen(name)) + value.size() + 4);
    return text.append(' ').append(name).append("=\"").append(value).append('"');
}

QByteArray hex(const QColor& color) {
    const QByteArray full = color.name().toLatin1();
    const bool doubled = full[1] == full[2] && full[3] == full[4] && full[5] == full[6];
    return doubled ? QByteArray("#") + full[1] + full[3] + full[5] : full;
}

/// A colour as the value of `name`, with its opacity where it has one.
QByteArray color_attribute(const char* name, const QColor& color) {
    QByteArray text = attribute(name, hex(color));
    if (color.alpha() != 255) {
        text += attribute(QByteArray(name + QByteArray("-opacity")), number(color.alphaF(), 3));
    }
    return text;
}

QByteArray stroke(const QPen& pen) {
    if (pen.style() == Qt::NoPen) {
        return {};
    }
    QByteArray text = color_attribute("stroke", pen.color());
    if (pen.widthF() != 1) {
        text += attribute("stroke-width", number(pen.widthF()));
    }
    return text;
}

bool rounds_to(double a, double b) {
    return number(a) == number(b);
}

/// The data of a path along points; short commands for lines along an axis.
QByteArray path_data(const QPolygonF& points) {
    QByteArray data;
    data.append('M').append(number(points.first().x()));
    data.append(' ').append(number(points.first().y()));
    for (qsizetype i = 1; i < points.size(); ++i) {
        const QPointF& from = points[i - 1];
        const QPointF& to = points[i];
        if (rounds_to(from.y(), to.y())) {
            data.append('H').append(number(to.x()));
        } else if (rounds_to(from.x(), to.x())) {
            data.append('V').append(number(to.y()));
        } else {
            data.append('L').append(number(to.x())).append(' ').append(number(to.y()));
        }
    }
    return data;
}

QByteArray point_data(const QPainterPath::Element& e) {
    constexpr double units = EM_UNITS / REFERENCE_SIZE;
    return number(e.x * units, 0) + ' ' + number(e.y * units, 0);
}

/// The data of an outline of a face at REFERENCE_SIZE.
QByteArray outline_data(const QPainterPath& path) {
    QByteArray data;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element e = path.elementAt(i);
        switch (e.type) {
        case QPainterPath::MoveToElement:
            data += (data.isEmpty() ? "M" : "ZM") + point_data(e);
            break;
        case QPainterPath::LineToElement:
            data += 'L' + point_data(e);
            break;
        case QPainterPath::CurveToElement:
            data += 'C' + point_data(e);
            break;
        case QPainterPath::CurveToDataElement:
            data += ' ' + point_data(e);
            break;
        }
    }
    return data.isEmpty() ? data : data + 'Z';
}

QByteArray rect_data(const QRectF& area) {
    return attribute("x", number(area.x())) + attribute("y", number(area.y())) +
           attribute("width", number(area.width())) + attribute("height", number(area.height()));
}

/// True where two rectangles differ by no more than the way of a line to its pixels.
bool same_figure(const QRectF& a, const QRectF& b) {
    constexpr double way = 1.0;
    return std::abs(a.left() - b.left()) <= way && std::abs(a.top() - b.top()) <= way &&
           std::abs(a.right() - b.right()) <= way && std::abs(a.bottom() - b.bottom()) <= way;
}

/// Text as the content of an element or attribute; without what XML cannot hold.
QByteArray escaped(const QString& text) {
    QString kept;
    for (const QChar c : text) {
        if (c >= u' ' && c != QChar(0xFFFE) && c != QChar(0xFFFF)) {
            kept += c;
        }
    }
    return kept.toHtmlEscaped().toUtf8();
}

} // namespace

SvgCanvas::SvgCanvas(QSizeF given_extent, double given_scale)
    : extent(given_extent), scale(given_scale) {}

void SvgCanvas::SetClip(const QRectF& area) {
    CancelClip();
    QByteArray& name = clips[rect_data(area)];
    if (name.isEmpty()) {
        name = "c" + QByteArray::number(static_cast<qulonglong>(clips.size()));
        defs += "<clipPath id=\"" + name + "\"><rect" + rect_data(area) + "/></clipPath>\n";
    }
    body += "<g clip-path=\"url(#" + name + ")\">\n";
    clipped = true;
}

void SvgCanvas::CancelClip() {
    flush_fill();
    if (clipped) {
        body += "</g>\n";
        clipped = false;
    }
}

void SvgCanvas::DrawPolyline(const QPolygonF& points, const QPen& pen) {
    flush_fill();
    body += "<path fill=\"none\"" + stroke(pen) + attribute("d", path_data(points)) + "/>\n";
}

void SvgCanvas::DrawPolygon(const QPolygonF& points, const QBrush& brush) {
    flush_fill();
    body += "<path" + paint(brush) + attribute("d", path_data(points) + 'Z') + "/>\n";
}

void SvgCanvas::DrawRect(const QRectF& area, QSizeF radii, const QPen& pen, const QBrush& brush) {
    const bool filled = brush.style() != Qt::NoBrush;
    const bool outlined = pen.style() != Qt::NoPen;
    if (filled && !outlined && radii.isEmpty()) {
        flush_fill();
        open_fill = {area, paint(brush)};
        return;
    }
    if (outlined && !filled && radii.isEmpty() && open_fill &&
        same_figure(open_fill->first, area)) {
        const QByteArray fill = open_fill->second;
        open_fill.reset();
        write_rect(area, radii, fill + stroke(pen));
        return;
    }
    flush_fill();
    write_rect(area, radii, paint(brush) + stroke(pen));
}

void SvgCanvas::InvertFrame(const QRectF& area) {
    DrawRect(area.adjusted(0.5, 0.5, -0.5, -0.5), {}, QPen(Qt::black), Qt::NoBrush);
}

void SvgCanvas::DrawText(const ShapedText& text, QPointF baseline, double size,
                         const QColor& color) {
    flush_fill();
    QByteArray uses;
    for (const GlyphRow& row : text.rows) {
        for (qsizetype i = 0; i < row.glyphs.size(); ++i) {
            const QByteArray name = glyph_name(row.face, row.glyphs[i]);
            const QPointF place = row.places[i] * EM_UNITS;
            if (name.isEmpty()) {
                continue;
            }
            uses += "<use xlink:href=\"#" + name + '"' + attribute("x", number(place.x(), 0));
            if (std::lround(place.y()) != 0) {
                uses += attribute("y", number(place.y(), 0));
            }
            uses += "/>";
        }
    }
    if (!uses.isEmpty()) {
        body += "<g" + attribute("aria-label", escaped(text.text)) +
                color_attribute("fill", color) + " transform=\"translate(" + number(baseline.x()) +
                ' ' + number(baseline.y()) + ")scale(" + number(size / EM_UNITS, 7) + ")\">" +
                uses + "</g>\n";
    }
}

void SvgCanvas::Write(QIODevice& out, const QString& title) {
    CancelClip();
    out.write("<svg xmlns=\"http://www.w3.org/2000/svg\" "
              "xmlns:xlink=\"http://www.w3.org/1999/xlink\"");
    out.write(attribute("width", number(extent.width() * scale)));
    out.write(attribute("height", number(extent.height() * scale)));
    out.write(
        attribute("viewBox", "0 0 " + number(extent.width()) + ' ' + number(extent.height())));
    out.write(">\n<title>" + escaped(title) + "</title>\n");
    if (!defs.isEmpty()) {
        out.write("<defs>\n");
        out.write(defs);
        out.write("</defs>\n");
    }
    for (const QByteArray& part : parts) {
        out.write(part);
    }
    out.write(body);
    out.write("</svg>\n");
}

QByteArray SvgCanvas::glyph_name(const QRawFont& face, quint32 glyph) {
    const auto [at, fresh] = glyphs.try_emplace({face_number(face), glyph});
    if (fresh) {
        const QByteArray data = outline_data(face.pathForGlyph(glyph));
        if (!data.isEmpty()) {
            at->second = "g" + QByteArray::number(static_cast<qulonglong>(glyphs.size()), 36);
            defs += "<path" + attribute("id", at->second) + attribute("d", data) + "/>\n";
        }
    }
    return at->second;
}

int SvgCanvas::face_number(const QRawFont& face) {
    for (std::size_t i = 0; i < faces.size(); ++i) {
        if (faces[i] == face) {
            return static_cast<int>(i);
        }
    }
    faces.push_back(face);
    return static_cast<int>(faces.size()) - 1;
}

QByteArray SvgCanvas::paint(const QBrush& brush) {
    if (brush.style() == Qt::NoBrush) {
        return " fill=\"none\"";
    }
    if (brush.gradient() == nullptr) {
        return color_attribute("fill", brush.color());
    }
    QByteArray stops;
    for (const QGradientStop& stop : brush.gradient()->stops()) {
        stops += "<stop" + attribute("offset", number(stop.first, 3)) +
                 color_attribute("stop-color", stop.second).replace("-color-opacity", "-opacity") +
                 "/>";
    }
    QByteArray& name = gradients[stops];
    if (name.isEmpty()) {
        name = "s" + QByteArray::number(static_cast<qulonglong>(gradients.size()));
        defs += "<linearGradient id=\"" + name + "\" x2=\"0\" y2=\"1\">" + stops +
                "</linearGradient>\n";
    }
    return attribute("fill", "url(#" + name + ")");
}

/// Small parts go where a layout has given memory back; one large body would come on top of it.
void SvgCanvas::part_body() {
    constexpr qsizetype full = 1 << 16;
    if (body.size() >= full) {
        parts.push_back(body);
        body.clear();
    }
}

void SvgCanvas::flush_fill() {
    part_body();
    if (open_fill) {
        write_rect(open_fill->first, {}, open_fill->second);
        open_fill.reset();
    }
}

void SvgCanvas::write_rect(const QRectF& area, QSizeF radii, const QByteArray& tools) {
    body += "<rect" + rect_data(area);
    if (!radii.isEmpty()) {
        body += attribute("rx", number(radii.width())) + attribute("ry", number(radii.height()));
    }
    body += tools + "/>\n";
}

} // namespace nurvex7::qt
