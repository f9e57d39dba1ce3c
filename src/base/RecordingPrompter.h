#pragma once

#include "base/Prompter.h"

namespace tavrel {

// A Prompter for work that runs where nobody can answer: every message is kept for the caller to
// report in its own way, questions take their default answer, and dialogs are cancelled.
class RecordingPrompter : public Prompter {
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
    void status(const QString &) override {}
    bool openDocument(const QString &, const QString &) override { return false; }

    // The texts of the messages shown so far, in order.
    const QStringList &messages() const { return m_messages; }

private:
    QStringList m_messages;
};

} // namespace tavrel
