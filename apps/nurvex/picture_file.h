#pragma once

#include "apps/nurvex/picture.h"

#include <QSaveFile>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace nurvex {

/// A file that a drawing is written to, in the format that its suffix tells. Pictures that belong
/// together are all written first, and put in their places then.
class PictureFile {
public:
    /// Errors  a Failure where the suffix is unknown, or where no such file can be written
    explicit PictureFile(const std::string& given_path);

    /// Errors  a Failure where the picture would take the place of this file
    void Spare(const std::string& input) const;

    /// Writes the picture beside the file; what was there before stays untouched.
    ///
    /// Gives a remark for the user where the picture could not be as large as the scale says; empty
    /// mostly. Without a scale the format takes its own.
    /// Errors  a Failure where the picture is too large or cannot be written
    std::string Write(const Picture& picture, std::optional<double> scale,
                      const std::string& title);
    /// Puts the written picture in the place of the file. Without it nothing is left behind.
    /// Errors  a Failure where that cannot be done
    void Place();

private:
    enum class Format { SVG, PNG, PDF };

    static Format find_format(const std::string& path);
    void check_target() const;
    QByteArray make_png(const Picture& picture, double scale) const;
    QByteArray make_pdf(const Picture& picture, double scale, const std::string& title) const;
    void save_svg(const Picture& picture, double scale, const std::string& title);
    void save(const QByteArray& content);
    void save_by(const std::function<void(QIODevice&)>& write);
    [[noreturn]] void fail_to_write() const;

    std::string path;
    Format format;
    std::unique_ptr<QSaveFile> written;
};

} // namespace nurvex
