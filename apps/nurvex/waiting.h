#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>
#include <QString>
#include <QWidget>

namespace nurvex {

/// The user does not want to wait any longer.
struct Cancelled {};

/// Lets the window live while something takes long: a dialogue comes up and tells what is going on.
class Waiting {
public:
    enum class Offer { CANCEL, NOTHING };

    /// Where nothing is offered, nobody knows either how much is left.
    Waiting(QWidget* window, Offer offer);

    /// What is done from now on, and up to where it fills the bar.
    void Begin(const QString& what, double until);
    /// `part` of the stage is done. Not more often shown than the eye can follow.
    /// Errors  Cancelled
    void Pause(double part) {
        if (clock.elapsed() >= PAUSE_EVERY) {
            show(part);
        }
    }

private:
    static constexpr int PAUSE_EVERY = 40; ///< milliseconds

    void show(double part);

    QProgressDialog dialogue;
    QElapsedTimer clock;
    Offer offered;
    bool came_up = false;
    double begin = 0;
    double end = 0;
};

} // namespace nurvex
