#include "apps/nurvex/view_command.h"

#include "apps/nurvex/failure.h"
#include "apps/nurvex/view_window.h"

#include <QApplication>

#include <iostream>
#include <memory>
#include <string>
#include <unistd.h>

namespace nurvex {

namespace {

constexpr const char* ADVICE = "draw a picture instead: nurvex draw FILE -o OUT";

/// The toolkit would end the program without a word of help.
void refuse_without_display() {
    for (const char* const name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (!qEnvironmentVariableIsEmpty(name)) {
            return;
        }
    }
    throw Failure(EXIT_FILES, std::string("there is no display to show a window on; ") + ADVICE);
}

/// What the toolkit said first of the display.
QString& display_remark() {
    static QString remark;
    return remark;
}

/// A display that is named and cannot be reached is the end for the toolkit, which offers to
/// install it again.
void explain_display(QtMsgType type, const QMessageLogContext& where, const QString& text) {
    QString& remark = display_remark();
    if (type == QtFatalMsg) {
        std::cerr << "nurvex: no window can be shown: " << remark.toStdString()
                  << "; check the display, or " << ADVICE << std::endl;
        _exit(EXIT_FILES); // what the toolkit has begun cannot be taken down
    }
    if (remark.isEmpty() && QByteArray(where.category).startsWith("qt.qpa")) {
        remark = text;
    }
}

std::unique_ptr<QApplication> make_application() {
    static int no_words = 0;
    const QtMessageHandler usual = qInstallMessageHandler(explain_display);
    auto application = std::make_unique<QApplication>(no_words, nullptr);
    qInstallMessageHandler(usual);
    return application;
}

} // namespace

void RunView(const ViewOptions& options) {
    refuse_without_display();
    const std::unique_ptr<QApplication> application = make_application();
    QApplication::setOrganizationName(QStringLiteral("nurvex"));
    QApplication::setApplicationName(QStringLiteral("nurvex"));
    ViewWindow window;
    window.show();
    if (!options.input.empty()) {
        QMetaObject::invokeMethod(
            &window, [&] { window.Open(QString::fromStdString(options.input)); },
            Qt::QueuedConnection);
    }
    QApplication::exec();
}

} // namespace nurvex
