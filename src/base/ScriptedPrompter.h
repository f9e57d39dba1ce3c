#pragma once

#include "base/Prompter.h"

#include <QList>
#include <QVariant>

#include <deque>

namespace tavrel {

// A Prompter for tests: records every call in order and returns answers queued beforehand.
// A call without a queued answer gets the default (OK, or a cancelled dialog).
class ScriptedPrompter : public Prompter {
public:
    struct Call {
        QString kind; // "message", "input", "multiLineInput", "openFile", "saveFile", "color",
                      // "font", "folder", "status", "openDocument", "printerSetup"
        QString text; // message text, prompt, dialog title, status text or path
        QString title;
        MessageIcon icon = MessageIcon::None;
        MessageButtons buttons = MessageButtons::Ok;
        MessageAnswer defaultAnswer = MessageAnswer::Ok;
        FileDialogRequest file;
        FontChoice font;   // where a font dialog started
        quint32 color = 0; // where a colour dialog started
    };

    void queueAnswer(MessageAnswer answer) { m_answers.push_back(answer); }
    void queueInput(std::optional<QString> text) { m_inputs.push_back(std::move(text)); }
    void queueFile(std::optional<QString> path) { m_files.push_back(std::move(path)); }
    void queueColor(std::optional<quint32> color) { m_colors.push_back(color); }
    void queueFont(std::optional<FontChoice> font) { m_fonts.push_back(std::move(font)); }
    void setOpenDocumentResult(bool result) { m_openResult = result; }
    void queuePrinterSetup(std::optional<PrinterSetup> setup) {
        m_printerSetups.push_back(std::move(setup));
    }
    // What the printer properties dialog was opened with, in order.
    const QList<PrinterSetup> &printerSetupsShown() const { return m_printerSetupsShown; }

    const QList<Call> &calls() const { return m_calls; }
    QList<Call> calls(const QString &kind) const;
    // Texts of the message boxes shown so far, in order.
    QStringList messages() const;
    void clear() { m_calls.clear(); }

    MessageAnswer message(const QString &text, const QString &title, MessageIcon icon,
                          MessageButtons buttons, MessageAnswer defaultAnswer) override;
    std::optional<QString> input(const QString &prompt, const QString &title,
                                 const QString &defaultText) override;
    // Takes its answer from the input queue.
    std::optional<QString> multiLineInput(const QString &prompt, const QString &title,
                                          const QString &defaultText) override;
    std::optional<QString> openFile(const FileDialogRequest &request) override;
    std::optional<QString> saveFile(const FileDialogRequest &request) override;
    std::optional<quint32> color(quint32 initial) override;
    std::optional<FontChoice> font(const FontChoice &initial) override;
    std::optional<QString> folder(const QString &title, const QString &start) override;
    void status(const QString &text) override;
    bool openDocument(const QString &path, const QString &description) override;
    std::optional<PrinterSetup> printerSetup(const PrinterSetup &initial) override;

private:
    QList<Call> m_calls;
    std::deque<MessageAnswer> m_answers;
    std::deque<std::optional<QString>> m_inputs;
    std::deque<std::optional<QString>> m_files;
    std::deque<std::optional<quint32>> m_colors;
    std::deque<std::optional<FontChoice>> m_fonts;
    bool m_openResult = true;
    std::deque<std::optional<PrinterSetup>> m_printerSetups;
    QList<PrinterSetup> m_printerSetupsShown;
};

} // namespace tavrel
