#pragma once

#include "base/Prompter.h"

#include <functional>

class QWidget;

namespace tavrel {

// The real Prompter: Qt message boxes and dialogs, parented to the active window.
class QtPrompter : public Prompter {
public:
    explicit QtPrompter(QString applicationTitle);

    // Where status texts go; none: the status bar of the main window in front, or standard
    // error when no such window is active.
    void setStatusSink(std::function<void(const QString &)> sink) {
        m_statusSink = std::move(sink);
    }

    MessageAnswer message(const QString &text, const QString &title, MessageIcon icon,
                          MessageButtons buttons, MessageAnswer defaultAnswer) override;
    std::optional<QString> input(const QString &prompt, const QString &title,
                                 const QString &defaultText) override;
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
    QWidget *parentWidget() const;

    QString m_title;
    std::function<void(const QString &)> m_statusSink;
};

} // namespace tavrel
