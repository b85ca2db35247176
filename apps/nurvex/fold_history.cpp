#include "apps/nurvex/fold_history.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <QUndoCommand>

#include <utility>

namespace nurvex {

using namespace nurvex7;

class FoldHistory::Step final : public QUndoCommand {
public:
    Step(const QString& name, std::vector<VisibilityChange> given, Drawing how,
         const Changed& changed)
        : QUndoCommand(name), changes(std::move(given)), drawing(how), told(changed) {}

    void undo() override { bring(/*back=*/true); }
    void redo() override {
        // The stack does each new step once, which has happened already.
        if (std::exchange(done, true)) {
            bring(/*back=*/false);
        }
    }

private:
    void bring(bool back) {
        VisibilityRecord before;
        for (const VisibilityChange& change : changes) {
            before.Note(change.node);
        }
        ForEachNodeIn(GetRoot(changes.front().node), &MarkOld, /*post_order=*/false,
                      /*include_self=*/false);
        for (const VisibilityChange& change : changes) {
            if (change.was_hidden == back) {
                Hide(change.node);
            } else {
                Show(change.node);
            }
        }
        if (drawing == Drawing::ANEW) {
            GetRoot(changes.front().node).MakeLayout();
        } else {
            QueueLayouts(before.FindChanges());
        }
        told(drawing);
    }

    std::vector<VisibilityChange> changes;
    const Drawing drawing;
    const Changed& told;
    bool done = false;
};

FoldHistory::FoldHistory(Changed changed) : told(std::move(changed)) {}

void FoldHistory::Record(const QString& name, const std::vector<VisibilityChange>& changes,
                         Drawing drawing) {
    if (!changes.empty()) {
        stack.push(new Step(name, changes, drawing, told));
    }
}

} // namespace nurvex
