// Opening, exporting and printing.
#include "apps/nurvex/failure.h"
#include "apps/nurvex/picture_file.h"
#include "apps/nurvex/view_picture.h"
#include "apps/nurvex/view_window.h"
#include "apps/nurvex/waiting.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPageLayout>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QScopedValueRollback>
#include <QSettings>
#include <QStatusBar>

#include <algorithm>
#include <exception>

namespace nurvex {

using namespace nurvex7;

namespace {

constexpr int MOST_RECENT = 10;
const char* const RECENT_KEY = "files/recent";

QString words_of(const std::exception& failure, const QString& file) {
    return QString::fromStdString(WordsOf(failure, file.toStdString()));
}

/// Of a pipe, nobody can tell when it gives something, nor read it again.
void refuse_passing(const QString& file) {
    const QFileInfo about(file);
    if (about.exists() && !about.isFile() && !about.isDir()) {
        throw Failure(EXIT_FILES, file.toStdString() +
                                      ": is a pipe or a device, which cannot be read again; save "
                                      "what it gives in a file, and open that");
    }
}

} // namespace

void ViewWindow::tell(const QString& title, const QString& text) {
    QMessageBox box(QMessageBox::Warning, title, text, QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

bool ViewWindow::Open(const QString& file) {
    if (opening) {
        return false;
    }
    const QString absolute = QFileInfo(file).absoluteFilePath();
    try {
        refuse_passing(absolute);
        const QScopedValueRollback mark(opening, true);
        show_opened(OpenGraphFile(absolute, style, spacing, view->GetPainter(), this), absolute);
        return true;
    } catch (const Cancelled&) {
        statusBar()->showMessage(QStringLiteral("Not opened."), 5000);
    } catch (const std::exception& failure) {
        tell(QStringLiteral("The file was not opened"), words_of(failure, absolute));
    }
    return false;
}

void ViewWindow::show_opened(const OpenedGraph& opened, const QString& file) {
    const graph_ptr2<Graph> before = view->GetGraph();
    history.Clear();
    layout = opened.layout;
    layout_milliseconds = opened.milliseconds;
    path = file;
    hint->hide();
    view->ShowGraph(opened.graph);
    style.Undress(before);
    find->SetGraph(opened.graph);
    setWindowTitle(QStringLiteral("%1 \u2013 nurvex").arg(QFileInfo(file).fileName()));
    remember_recent(file);
    count();
}

void ViewWindow::ask_and_open() {
    const QString file = QFileDialog::getOpenFileName(
        this, QStringLiteral("Open a Text Graph"), QFileInfo(path).absolutePath(),
        QStringLiteral("Text graphs (*.txt);;All files (*)"));
    if (!file.isEmpty()) {
        Open(file);
    }
}

void ViewWindow::remember_recent(const QString& file) {
    QSettings settings;
    QStringList files = settings.value(QLatin1String(RECENT_KEY)).toStringList();
    files.removeAll(file);
    files.prepend(file);
    settings.setValue(QLatin1String(RECENT_KEY), files.mid(0, MOST_RECENT));
}

void ViewWindow::fill_recent() {
    recent->clear();
    const QStringList files = QSettings().value(QLatin1String(RECENT_KEY)).toStringList();
    for (const QString& file : files) {
        QString shown = file;
        recent->addAction(shown.replace(QLatin1Char('&'), QStringLiteral("&&")), this,
                          [this, file] { Open(file); });
    }
    if (files.isEmpty()) {
        recent->addAction(QStringLiteral("No files yet"))->setEnabled(false);
    }
}

// Pictures

bool ViewWindow::Export(const QString& to, bool whole) {
    try {
        PictureFile file(to.toStdString());
        file.Spare(path.toStdString());
        const graph_ptr2<Graph> graph = view->GetGraph();
        const ViewPicture picture(graph, style.GetBackground(), view->GetTypesetter(),
                                  whole ? ViewPicture::FindWholeArea(*graph)
                                        : view->GetVisibleArea());
        const std::string remark =
            file.Write(picture, std::nullopt, QFileInfo(path).completeBaseName().toStdString());
        file.Place();
        statusBar()->showMessage(remark.empty() ? QStringLiteral("Exported: %1").arg(to)
                                                : QString::fromStdString(remark),
                                 10'000);
        return true;
    } catch (const std::exception& failure) {
        tell(QStringLiteral("Nothing was exported"), words_of(failure, to));
    }
    return false;
}

void ViewWindow::ask_and_export(bool whole) {
    const QFileInfo from(path);
    const QString proposed = from.absolutePath() + QLatin1Char('/') +
                             (path.isEmpty() ? QStringLiteral("graph") : from.completeBaseName()) +
                             QStringLiteral(".svg");
    const QString to = QFileDialog::getSaveFileName(
        this, whole ? QStringLiteral("Export the Drawing") : QStringLiteral("Export What Is Seen"),
        proposed, QStringLiteral("Pictures (*.svg *.png *.pdf)"));
    if (!to.isEmpty()) {
        Export(to, whole);
    }
}

/// The whole drawing on one page, turned so that it is as large as possible.
void ViewWindow::print() {
    const graph_ptr2<Graph> graph = view->GetGraph();
    const ViewPicture picture(graph, {255, 255, 255}, view->GetTypesetter(),
                              ViewPicture::FindWholeArea(*graph));
    const QSizeF size = picture.GetSize();
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(size.width() > size.height() ? QPageLayout::Landscape
                                                            : QPageLayout::Portrait);
    printer.setDocName(QFileInfo(path).completeBaseName());
    QPrintDialog dialogue(&printer, this);
    if (dialogue.exec() != QDialog::Accepted) {
        return;
    }
    // Paper is white, whatever the desktop.
    style.SetTheme(Theme::LIGHT);
    QPainter inner;
    if (inner.begin(&printer)) {
        const QRectF page = printer.pageLayout().paintRectPixels(printer.resolution());
        const double largest = printer.resolution() / 96.0;
        const double fit =
            std::min({largest, page.width() / size.width(), page.height() / size.height()});
        inner.scale(fit, fit);
        nurvex7::qt::QtPainter painter(inner, view->GetTypesetter());
        picture.Paint(painter);
    } else {
        tell(QStringLiteral("Nothing was printed"),
             QStringLiteral("The printer cannot be reached. Check that it is on, or print to a "
                            "file."));
    }
    follow_palette();
}

} // namespace nurvex
