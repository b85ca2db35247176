#include "apps/nurvex/waiting.h"

#include <QApplication>
#include <QLabel>

#include <algorithm>

namespace nurvex {

namespace {

constexpr int DIALOGUE_AFTER = 500; ///< milliseconds
constexpr int DIALOGUE_WIDTH = 360; ///< pixel
constexpr int WHOLE = 1000;

} // namespace

Waiting::Waiting(QWidget* window, Offer offer)
    : dialogue(QString(), QStringLiteral("Cancel"), 0, offer == Offer::CANCEL ? WHOLE : 0, window),
      offered(offer) {
    dialogue.setWindowTitle(QStringLiteral("nurvex"));
    auto* const told = new QLabel(&dialogue);
    told->setTextFormat(Qt::PlainText); // a file may be called what looks like markup
    dialogue.setLabel(told);
    if (offered == Offer::NOTHING) {
        dialogue.setCancelButton(nullptr);
    }
    dialogue.setWindowModality(Qt::ApplicationModal);
    dialogue.setMinimumDuration(DIALOGUE_AFTER);
    dialogue.setMinimumWidth(DIALOGUE_WIDTH);
    dialogue.setAutoReset(false);
    dialogue.setValue(0);
    clock.start();
}

void Waiting::Begin(const QString& what, double until) {
    dialogue.setLabelText(what);
    begin = end;
    end = until;
    show(0);
}

void Waiting::show(double part) {
    clock.restart();
    if (offered == Offer::CANCEL) {
        const double all = begin + std::min(1.0, part) * (end - begin);
        dialogue.setValue(std::min(WHOLE - 1, static_cast<int>(all * WHOLE)));
    }
    came_up = came_up || dialogue.isVisible();
    if (offered == Offer::NOTHING && came_up && !dialogue.isVisible()) {
        dialogue.show(); // the escape key has sent it away, and still nothing else can be done
    }
    // Until the dialogue is up, nothing keeps input from the window.
    QApplication::processEvents(dialogue.isVisible() ? QEventLoop::AllEvents
                                                     : QEventLoop::ExcludeUserInputEvents);
    if (offered == Offer::CANCEL && dialogue.wasCanceled()) {
        throw Cancelled();
    }
}

} // namespace nurvex
