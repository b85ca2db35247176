#pragma once

#include <QFont>
#include <QList>
#include <QPointF>
#include <QRawFont>
#include <QString>

#include <map>
#include <memory>
#include <string>
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

/// Faces are opened at this many pixels an em, where their metrics are whole numbers, and scaled
/// down from there. A text is then as wide on a screen as on paper, and twice as wide at twice the
/// size: no hinting, no rounding to pixels.
inline constexpr double REFERENCE_SIZE = 2048;

/// A family of the system, ready to set texts with. It keeps what it has set lately.
class Typeface {
public:
    explicit Typeface(const std::string& name);

    double GetAscent() const { return ascent; }   ///< ems
    double GetDescent() const { return descent; } ///< ems

    /// Order   several faces where one lacks a script; from left to right
    std::shared_ptr<const ShapedText> Shape(const std::string& text);
    /// The text, or as much of it with an ellipsis behind it as fits into a width in ems.
    std::shared_ptr<const ShapedText> ShapeToFit(const std::string& text, double width);

private:
    ShapedText shape(const QString& text) const;

    QFont font;
    double ascent = 0;
    double descent = 0;
    std::unordered_map<std::string, std::shared_ptr<const ShapedText>> recent;
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
