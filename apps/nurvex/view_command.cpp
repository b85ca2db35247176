#include "apps/nurvex/view_command.h"

#include "apps/nurvex/failure.h"
#include "apps/nurvex/view_window.h"

#include <QApplication>

namespace nurvex {

namespace {

/// The toolkit would end the program without a word of help.
void refuse_without_display() {
    for (const char* const name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (!qEnvironmentVariableIsEmpty(name)) {
            return;
        }
    }
    throw Failure(EXIT_FILES, "there is no display to show a window on; draw a picture instead: "
                              "nurvex draw FILE -o OUT");
}

} // namespace

void RunView(const ViewOptions& options) {
    refuse_without_display();
    int no_words = 0;
    QApplication application(no_words, nullptr);
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
