#pragma once

#include "apps/nurvex/visibility.h"

#include <QString>
#include <QUndoStack>

#include <functional>
#include <vector>

namespace nurvex {

/// What was folded, hidden and shown, to be taken back step by step.
class FoldHistory {
public:
    /// What a step does to the drawing: fits itself into it, or has it made anew.
    enum class Drawing { UPDATED, ANEW };
    using Changed = std::function<void(Drawing)>;

    /// `changed` is called after each undo and redo, with the layouts queued.
    explicit FoldHistory(Changed changed);

    /// Remembers what has just been done, to be undone and redone in the same way. Nothing where
    /// nothing has changed.
    void Record(const QString& name, const std::vector<VisibilityChange>& changes,
                Drawing drawing = Drawing::UPDATED);
    /// Forgets everything: another graph is shown.
    void Clear() { stack.clear(); }
    QUndoStack& GetStack() { return stack; }

private:
    class Step;

    Changed told;
    QUndoStack stack;
};

} // namespace nurvex
