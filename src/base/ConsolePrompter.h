#pragma once

#include "base/RecordingPrompter.h"

namespace tavrel {

// The Prompter of the command-line tools: a recording prompter that also writes every message
// and status text to standard error; questions take their default answer and dialogs are
// cancelled.
class ConsolePrompter : public RecordingPrompter {
public:
    MessageAnswer message(const QString &text, const QString &title, MessageIcon icon,
                          MessageButtons buttons, MessageAnswer defaultAnswer) override;
    void status(const QString &text) override;
    bool openDocument(const QString &path, const QString &description) override;

    // The messages shown so far, so a command can tell whether start-up complained.
    int messageCount() const { return int(messages().size()); }
};

} // namespace tavrel
