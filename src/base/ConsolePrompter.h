#pragma once

#include "base/Prompter.h"

namespace tavrel {

// The Prompter of the command-line tools: messages and status texts go to standard error,
// questions take their default answer and dialogs are cancelled.
class ConsolePrompter : public Prompter {
public:
    MessageAnswer message(const QString &text, const QString &title, MessageIcon icon,
                          MessageButtons buttons, MessageAnswer defaultAnswer) override;
    std::optional<QString> input(const QString &, const QString &, const QString &) override {
        return std::nullopt;
    }
    std::optional<QString> openFile(const FileDialogRequest &) override { return std::nullopt; }
    std::optional<QString> saveFile(const FileDialogRequest &) override { return std::nullopt; }
    std::optional<quint32> color(quint32) override { return std::nullopt; }
    std::optional<FontChoice> font(const FontChoice &) override { return std::nullopt; }
    std::optional<QString> folder(const QString &, const QString &) override {
        return std::nullopt;
    }
    void status(const QString &text) override;
    bool openDocument(const QString &path, const QString &description) override;

    // The messages shown so far, so a command can tell whether start-up complained.
    int messageCount() const { return m_messages; }

private:
    int m_messages = 0;
};

} // namespace tavrel
