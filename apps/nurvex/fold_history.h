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
    /// `changed` is called after each undo and redo, with the layouts queued.
    explicit FoldHistory(std::function<void()> changed);

    /// Remembers what has just been done. Nothing where nothing has changed.
    void Record(const QString& name, const std::vector<VisibilityChange>& changes);
    /// Forgets everything: another graph is shown.
    void Clear() { stack.clear(); }
    QUndoStack& GetStack() { return stack; }

private:
    class Step;

    std::function<void()> told;
    QUndoStack stack;
};

} // namespace nurvex
