#include "apps/nurvex/picture_file.h"

#include "apps/nurvex/failure.h"
#include "hosts/qt/svg_canvas.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>

namespace nurvex {

using nurvex7::qt::QtPainter;
using nurvex7::qt::SvgCanvas;

namespace {

constexpr double MAX_PNG_SIDE = 32767;
constexpr double MAX_PNG_PIXELS = 1 << 28; // a gigabyte in memory
constexpr double MAX_PDF_POINTS = 14400;
constexpr double POINTS_PER_UNIT = 72.0 / 96.0;

std::string text_of(double number) {
    return QByteArray::number(number, 'g', 3).toStdString();
}

/// The largest scale at which a PNG can hold the drawing, rounded down to three digits.
double png_limit(QSizeF size) {
    const double fit = std::min({MAX_PNG_SIDE / size.width(), MAX_PNG_SIDE / size.height(),
                                 std::sqrt(MAX_PNG_PIXELS / (size.width() * size.height()))});
    const double digit = std::pow(10.0, std::floor(std::log10(fit)) - 2);
    return std::floor(fit / digit) * digit;
}

[[noreturn]] void fail(const std::string& path, const std::string& what) {
    throw Failure(EXIT_FILES, path + ": " + what);
}

/// Writes all that it is given or fails. By itself a file takes what still fits on a full disk and
/// gives its size, which nobody asks for on the way through a writer of pictures.
class WholeFile final : public QSaveFile {
public:
    using QSaveFile::QSaveFile;

protected:
    qint64 writeData(const char* data, qint64 size) override {
        for (qint64 done = 0; done < size;) {
            const qint64 taken = QSaveFile::writeData(data + done, size - done);
            if (taken <= 0) {
                return -1;
            }
            done += taken;
        }
        return size;
    }
};

} // namespace

PictureFile::PictureFile(const std::string& given_path)
    : path(given_path), format(find_format(given_path)) {
    check_target();
}

PictureFile::Format PictureFile::find_format(const std::string& path) {
    const QString suffix = QFileInfo(QString::fromStdString(path)).suffix().toLower();
    if (suffix == "svg") {
        return Format::SVG;
    }
    if (suffix == "png") {
        return Format::PNG;
    }
    if (suffix == "pdf") {
        return Format::PDF;
    }
    throw Failure(EXIT_INPUT, path + ": the suffix tells no format; name a file that ends in "
                                     ".svg, .png or .pdf");
}

/// What would fail only after a long layout is told before it.
void PictureFile::check_target() const {
    if (QString::fromStdString(path).toStdString() != path) {
        fail(path, "the name of the picture is not in UTF-8; choose another");
    }
    QFileInfo file(QString::fromStdString(path));
    constexpr int longest_chain = 40;
    for (int i = 0; i < longest_chain && file.isSymLink(); ++i) {
        file.setFile(file.symLinkTarget()); // what is written is what the link leads to
    }
    const QFileInfo folder(file.absolutePath());
    if (file.isDir()) {
        fail(path, "is a directory; name a file in it");
    }
    if (file.exists() && !file.isFile()) {
        fail(path, "is not an ordinary file; name another");
    }
    if (file.exists() && !file.isWritable()) {
        fail(path, "cannot be written to; change its permissions, or name another");
    }
    if (!folder.isDir()) {
        fail(path, "its directory does not exist; make it first, or name another");
    }
    if (!folder.isWritable()) {
        fail(path, "its directory cannot be written to; change its permissions, or name another");
    }
}

void PictureFile::Spare(const std::string& input) const {
    std::error_code ignored;
    if (std::filesystem::equivalent(path, input, ignored)) {
        fail(path, "is the graph itself, which the picture would replace; name another file");
    }
}

std::string PictureFile::Write(const Picture& picture, std::optional<double> scale,
                               const std::string& title) {
    const QSizeF size = picture.GetSize();
    std::string remark;
    double factor = scale.value_or(format == Format::PNG ? 2.0 : 1.0);
    if (format == Format::PNG) {
        const double limit = png_limit(size);
        if (scale && factor > limit) {
            fail(path, "at scale " + text_of(factor) + " the picture is too large for a PNG; use " +
                           "--scale " + text_of(limit) + " or less, or write an .svg");
        }
        if (factor > limit) {
            factor = limit;
            remark = path + ": drawn at scale " + text_of(limit) +
                     ", the largest that fits into a PNG; an .svg has no such limit";
        }
    } else if (format == Format::PDF) {
        const double limit =
            MAX_PDF_POINTS / POINTS_PER_UNIT / std::max(size.width(), size.height());
        if (factor > limit) {
            factor = limit;
            remark = path + ": drawn at scale " + text_of(limit) +
                     ", the largest that fits on a page of PDF; an .svg has no such limit";
        }
    }
    switch (format) {
    case Format::SVG:
        save_svg(picture, factor, title);
        break;
    case Format::PNG:
        save(make_png(picture, factor));
        break;
    case Format::PDF:
        save(make_pdf(picture, factor, title));
        break;
    }
    return remark;
}

/// Written straight from the canvas: of a large graph, one more copy takes a gigabyte.
void PictureFile::save_svg(const Picture& picture, double scale, const std::string& title) {
    SvgCanvas canvas(picture.GetSize(), scale);
    QtPainter painter(canvas, picture.GetTypesetter());
    picture.Paint(painter);
    save_by([&](QIODevice& out) { canvas.Write(out, QString::fromStdString(title)); });
}

QByteArray PictureFile::make_png(const Picture& picture, double scale) const {
    const QSizeF size = picture.GetSize();
    QImage image(static_cast<int>(std::ceil(size.width() * scale)),
                 static_cast<int>(std::ceil(size.height() * scale)), QImage::Format_RGB32);
    if (image.isNull()) {
        fail(path, "there is not enough memory for " + text_of(size.width() * scale) + " by " +
                       text_of(size.height() * scale) +
                       " pixels; use a smaller --scale, or write an .svg");
    }
    const int dots_per_metre = static_cast<int>(std::lround(96 * scale / 0.0254));
    {
        QPainter inner(&image);
        inner.scale(scale, scale);
        QtPainter painter(inner, picture.GetTypesetter());
        picture.Paint(painter);
    }
    image.setDotsPerMeterX(dots_per_metre);
    image.setDotsPerMeterY(dots_per_metre);
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    if (!image.save(&out, "PNG")) {
        fail(path, "the picture cannot be packed as PNG; use a smaller --scale, or write an .svg");
    }
    return out.data();
}

QByteArray PictureFile::make_pdf(const Picture& picture, double scale,
                                 const std::string& title) const {
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    QPdfWriter writer(&out);
    const QSizeF points = picture.GetSize() * scale * POINTS_PER_UNIT;
    writer.setResolution(96);
    writer.setPageSize(QPageSize(points, QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    writer.setTitle(QString::fromStdString(title));
    writer.setCreator(QStringLiteral("nurvex"));
    QPainter inner(&writer);
    inner.scale(scale, scale);
    {
        QtPainter painter(inner, picture.GetTypesetter());
        picture.Paint(painter);
    }
    inner.end();
    return out.data();
}

void PictureFile::save(const QByteArray& content) {
    save_by([&](QIODevice& out) { out.write(content); });
}

void PictureFile::save_by(const std::function<void(QIODevice&)>& write) {
    written = std::make_unique<WholeFile>(QString::fromStdString(path));
    if (!written->open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        fail_to_write();
    }
    write(*written);
    if (written->error() != QFileDevice::NoError || !written->flush()) {
        fail_to_write();
    }
}

void PictureFile::Place() {
    if (written == nullptr || !written->commit()) {
        fail_to_write();
    }
    written.reset();
}

void PictureFile::fail_to_write() const {
    const std::string reason =
        written != nullptr ? written->errorString().toStdString() : "nothing has been drawn";
    fail(path, "cannot be written: " + reason + "; check the directory and the space left in it");
}

} // namespace nurvex
