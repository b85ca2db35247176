#include "apps/nurvex/spacing_dialog.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QPushButton>

#include <array>
#include <cstddef>

namespace nurvex {

namespace {

struct Entry {
    const char* label;
    double Spacing::*value;
};

constexpr std::array<Entry, 4> ENTRIES{{
    {"Between &levels", &Spacing::level_gap},
    {"Between &nodes of a level", &Spacing::node_gap},
    {"Between &edges side by side", &Spacing::edge_gap},
    {"&Straight piece beside a node", &Spacing::edge_margin},
}};

} // namespace

std::optional<Spacing> AskSpacing(QWidget* window, const Spacing& current) {
    QDialog dialogue(window);
    dialogue.setWindowTitle(QStringLiteral("Spacing"));
    auto* const form = new QFormLayout(&dialogue);
    std::array<QDoubleSpinBox*, ENTRIES.size()> boxes{};
    const auto show = [&boxes](const Spacing& spacing) {
        for (std::size_t i = 0; i < ENTRIES.size(); ++i) {
            boxes[i]->setValue(spacing.*ENTRIES[i].value);
        }
    };
    for (std::size_t i = 0; i < ENTRIES.size(); ++i) {
        boxes[i] = new QDoubleSpinBox(&dialogue);
        boxes[i]->setRange(0, Spacing::MOST);
        boxes[i]->setDecimals(1);
        form->addRow(QString::fromLatin1(ENTRIES[i].label), boxes[i]);
    }
    show(current);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel |
                                                   QDialogButtonBox::RestoreDefaults,
                                               &dialogue);
    form->addRow(buttons);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialogue, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialogue, &QDialog::reject);
    QObject::connect(buttons->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked,
                     &dialogue, [&show] { show(Spacing()); });
    if (dialogue.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    Spacing chosen;
    for (std::size_t i = 0; i < ENTRIES.size(); ++i) {
        chosen.*ENTRIES[i].value = boxes[i]->value();
    }
    return chosen;
}

} // namespace nurvex
