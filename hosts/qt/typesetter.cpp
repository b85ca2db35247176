#include "hosts/qt/typesetter.h"

#include <QFontInfo>
#include <QGlyphRun>
#include <QStringDecoder>
#include <QTextLayout>

#include <algorithm>
#include <utility>

namespace nurvex7::qt {

namespace {

constexpr std::size_t MAX_RECENT = 8192;

QFont reference_font(const std::string& name) {
    QFont font;
    if (name.empty()) {
        font.setStyleHint(QFont::SansSerif);
        font.setFamily(QStringLiteral("sans-serif"));
    } else {
        font.setFamilies({QString::fromStdString(name), QStringLiteral("sans-serif")});
    }
    font.setPixelSize(static_cast<int>(REFERENCE_SIZE));
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// How many bytes a UTF-8 character has that starts with this byte; 1 for what starts none.
std::size_t sequence_length(unsigned char lead) {
    if (lead >= 0xF0 && lead < 0xF8) {
        return 4;
    }
    if (lead >= 0xE0 && lead < 0xF0) {
        return 3;
    }
    return lead >= 0xC2 && lead < 0xE0 ? 2 : 1;
}

/// The length of a text without the stump of a character at its end.
std::size_t whole_characters(std::string_view text) {
    std::size_t at = text.size();
    while (at > 0 && text.size() - at < 3) {
        --at;
        const auto byte = static_cast<unsigned char>(text[at]);
        if ((byte & 0xC0U) != 0x80U) {
            return at + sequence_length(byte) > text.size() ? at : text.size();
        }
    }
    return text.size();
}

QPointF in_ems(QPointF place) {
    return place / REFERENCE_SIZE;
}

} // namespace

QString DecodeCaption(const std::string& text) {
    constexpr std::string_view ellipsis = "...";
    std::string_view body = text;
    std::string_view tail;
    if (body.ends_with(ellipsis)) {
        body.remove_suffix(ellipsis.size());
        tail = ellipsis;
    }
    body = body.substr(0, whole_characters(body));
    QString decoded = QString::fromUtf8(body.data(), static_cast<qsizetype>(body.size())) +
                      QString::fromUtf8(tail.data(), static_cast<qsizetype>(tail.size()));
    for (QChar& c : decoded) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator) {
            c = u' ';
        }
    }
    return decoded;
}

InkRange FindInk(const ShapedText& text) {
    InkRange ink;
    for (const GlyphRow& row : text.rows) {
        for (qsizetype i = 0; i < row.glyphs.size(); ++i) {
            const QRectF box = row.face.boundingRect(row.glyphs[i]);
            ink.top = std::min(ink.top, row.places[i].y() + box.top() / REFERENCE_SIZE);
            ink.bottom = std::max(ink.bottom, row.places[i].y() + box.bottom() / REFERENCE_SIZE);
        }
    }
    return ink;
}

Typeface::Typeface(const std::string& name)
    : font(reference_font(name)), letters(LETTERS), pairs(LETTERS * LETTERS) {
    const QRawFont face = QRawFont::fromFont(font);
    ascent = face.ascent() / REFERENCE_SIZE;
    descent = face.descent() / REFERENCE_SIZE;
}

std::shared_ptr<const ShapedText> Typeface::Shape(const std::string& text) {
    const auto known = recent.find(text);
    if (known != recent.end()) {
        return known->second;
    }
    ShapedText shaped;
    shaped.text = DecodeCaption(text);
    if (shape_plain(shaped.text, shaped)) {
        return std::make_shared<const ShapedText>(std::move(shaped));
    }
    if (recent.size() >= MAX_RECENT) {
        recent.clear();
    }
    auto kept = std::make_shared<const ShapedText>(shape_any(shaped.text));
    recent.emplace(text, kept);
    return kept;
}

double Typeface::Measure(const std::string& text) {
    const std::optional<double> plain = set_plain(text, [](quint32, double) {});
    return plain ? *plain : Shape(text)->advance;
}

std::shared_ptr<const ShapedText> Typeface::ShapeToFit(const std::string& text, double width) {
    auto whole = Shape(text);
    if (whole->advance <= width) {
        return whole;
    }
    ShapedText best;
    qsizetype fits = -1;
    qsizetype too_long = whole->text.size();
    while (too_long - fits > 1) {
        const qsizetype keep = (fits + too_long) / 2;
        ShapedText cut = shape(whole->text.left(keep).trimmed() + QChar(u'…'));
        if (cut.advance <= width) {
            fits = keep;
            best = std::move(cut);
        } else {
            too_long = keep;
        }
    }
    return std::make_shared<const ShapedText>(std::move(best));
}

ShapedText Typeface::shape(const QString& text) {
    ShapedText result;
    result.text = text;
    return shape_plain(text, result) ? result : shape_any(text);
}

/// Plain captions are set letter by letter, from what the shaper said of these letters and pairs
/// before. It takes a tenth of the time, and there may be a million captions. `take` is told each
/// glyph and its place.
///
/// Gives the advance; nothing where the text is not plain
template <typename F>
std::optional<double> Typeface::set_plain(std::string_view text, F take) {
    const bool ascii = std::all_of(text.begin(), text.end(),
                                   [](char c) { return c >= FIRST_LETTER && c <= LAST_LETTER; });
    if (!ascii || text.empty()) {
        return std::nullopt;
    }
    double x = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const Letter& here = letter(text[i]);
        const Letter& taken = i + 1 == text.size() ? here : pair(text[i], text[i + 1]);
        if (!here.plain || !taken.plain) {
            return std::nullopt;
        }
        take(here.glyph, x);
        x += taken.advance;
    }
    return x;
}

bool Typeface::shape_plain(const QString& text, ShapedText& result) {
    GlyphRow row;
    row.glyphs.reserve(text.size());
    row.places.reserve(text.size());
    const std::optional<double> advance =
        set_plain(text.toStdString(), [&row](quint32 glyph, double x) {
            row.glyphs.append(glyph);
            row.places.append({x, 0});
        });
    if (!advance) {
        return false;
    }
    row.face = plain_face;
    result.rows = {std::move(row)};
    result.advance = *advance;
    return true;
}

const Typeface::Letter& Typeface::letter(char c) {
    Letter& at = letters[static_cast<std::size_t>(c - FIRST_LETTER)];
    if (at.known) {
        return at;
    }
    at.known = true;
    const ShapedText alone = shape_any(QString(QLatin1Char(c)));
    if (alone.rows.size() == 1 && alone.rows[0].glyphs.size() == 1) {
        const GlyphRow& row = alone.rows[0];
        plain_face = plain_face.isValid() ? plain_face : row.face;
        at = {row.glyphs[0], true, row.face == plain_face, alone.advance};
    }
    return at;
}

const Typeface::Letter& Typeface::pair(char first, char second) {
    const auto row = static_cast<std::size_t>(first - FIRST_LETTER);
    Letter& at = pairs[row * LETTERS + static_cast<std::size_t>(second - FIRST_LETTER)];
    if (!at.known) {
        const Letter& a = letter(first);
        const Letter& b = letter(second);
        const ShapedText both = shape_any(QString(QLatin1Char(first)) + QLatin1Char(second));
        const bool plain = a.plain && b.plain && both.rows.size() == 1 &&
                           both.rows[0].glyphs == QList<quint32>{a.glyph, b.glyph};
        at = {a.glyph, true, plain, both.advance - b.advance};
    }
    return at;
}

ShapedText Typeface::shape_any(const QString& text) const {
    ShapedText result;
    result.text = text;
    QTextLayout layout(text, font);
    QTextOption option;
    option.setUseDesignMetrics(true);
    option.setWrapMode(QTextOption::NoWrap);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    layout.setTextOption(option);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    if (!line.isValid()) {
        return result;
    }
    result.advance = line.horizontalAdvance() / REFERENCE_SIZE;
    const QPointF baseline(0, line.ascent());
    for (const QGlyphRun& run : line.glyphRuns()) {
        GlyphRow row{run.rawFont(), run.glyphIndexes(), {}};
        row.places.reserve(run.positions().size());
        for (const QPointF& place : run.positions()) {
            row.places.append(in_ems(place - baseline));
        }
        result.rows.push_back(std::move(row));
    }
    return result;
}

Typeface& Typesetter::GetTypeface(const std::string& name) {
    std::unique_ptr<Typeface>& face = faces[name];
    if (!face) {
        face = std::make_unique<Typeface>(name);
    }
    return *face;
}

} // namespace nurvex7::qt
