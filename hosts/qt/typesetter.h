#pragma once

#include <QFont>
#include <QList>
#include <QPointF>
#include <QRawFont>
#include <QString>

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace nurvex7::qt {

/// Glyphs of one face that stand in a row.
///
/// Space   places are in ems from the left end of the baseline, y downwards
struct GlyphRow {
    QRawFont face; ///< at REFERENCE_SIZE pixels an em
    QList<quint32> glyphs;
    QList<QPointF> places;
};

/// A text turned into glyphs, at no size in particular: all lengths are in ems.
struct ShapedText {
    QString text;
    std::vector<GlyphRow> rows;
    double advance = 0; ///< trailing blanks included
};

/// How far the ink of a text reaches from its baseline, in ems; y downwards.
struct InkRange {
    double top = 0;
    double bottom = 0;
};
InkRange FindInk(const ShapedText& text);

/// Faces are opened at this many pixels an em and scaled from there. A text is then as wide on a
/// screen as on paper, and twice as wide at twice the size: no hinting, no rounding to pixels. The
/// metrics of 64ths of pixels are exact for the usual 2048 units an em, and faces up to this size
/// keep theirs at hand.
inline constexpr double REFERENCE_SIZE = 64;

/// A family of the system, ready to set texts with. It keeps what the shaper has set lately; texts
/// of plain letters are quicker to set than to find again.
class Typeface {
public:
    explicit Typeface(const std::string& name);

    double GetAscent() const { return ascent; }   ///< ems
    double GetDescent() const { return descent; } ///< ems

    /// Order   several faces where one lacks a script; from left to right
    std::shared_ptr<const ShapedText> Shape(const std::string& text);
    /// The advance alone, in ems. Of a large graph every caption is measured, and few are drawn.
    double Measure(const std::string& text);
    /// The text, or as much of it with an ellipsis behind it as fits into a width in ems.
    std::shared_ptr<const ShapedText> ShapeToFit(const std::string& text, double width);

private:
    /// A letter that always has the same glyph, or a letter after such a one.
    struct Letter {
        quint32 glyph = 0;
        bool known = false;
        bool plain = false; ///< false where neighbours change more than the distance
        double advance = 0; ///< ems; of a pair: what the first then takes
    };
    static constexpr char FIRST_LETTER = ' ';
    static constexpr char LAST_LETTER = '~';
    static constexpr std::size_t LETTERS = LAST_LETTER - FIRST_LETTER + 1;

    template <typename F>
    std::optional<double> set_plain(std::string_view text, F take);
    bool shape_plain(const QString& text, ShapedText& result);
    ShapedText shape(const QString& text);
    ShapedText shape_any(const QString& text) const;
    const Letter& letter(char c);
    const Letter& pair(char first, char second);

    QFont font;
    double ascent = 0;
    double descent = 0;
    std::unordered_map<std::string, std::shared_ptr<const ShapedText>> recent;
    QRawFont plain_face;
    std::vector<Letter> letters; ///< from FIRST_LETTER on
    std::vector<Letter> pairs;   ///< by the first, then by the second
};

/// The typefaces by name. Painters may share one, so that a text that was measured need not be set
/// again to be drawn.
///
/// Duty    used while a QGuiApplication exists, on one thread
class Typesetter {
public:
    /// The empty name is the platform's sans serif; a name that the platform does not have is
    /// replaced by a similar one, "Arial" by one of equal metrics.
    Typeface& GetTypeface(const std::string& name);

private:
    std::map<std::string, std::unique_ptr<Typeface>> faces;
};

/// What a caption says, for drawing: blanks for control characters, and no stump where a
/// multi-byte character was cut off at the end or before an ellipsis.
QString DecodeCaption(const std::string& text);

} // namespace nurvex7::qt
