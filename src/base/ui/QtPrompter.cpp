#include "base/ui/QtPrompter.h"

#include "base/ui/PrinterPropertiesDialog.h"

#include <QApplication>
#include <QColorDialog>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFontDialog>
#include <QFontInfo>
#include <QInputDialog>
#include <QMainWindow>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QUrl>

#include <cstdio>

namespace tavrel {

QtPrompter::QtPrompter(QString applicationTitle)
    : m_title(std::move(applicationTitle)) {}

QWidget *QtPrompter::parentWidget() const {
    return QApplication::activeWindow();
}

MessageAnswer QtPrompter::message(const QString &text, const QString &title, MessageIcon icon,
                                  MessageButtons buttons, MessageAnswer defaultAnswer) {
    QMessageBox box(parentWidget());
    box.setWindowTitle(title.isEmpty() ? m_title : title);
    box.setText(text);
    switch (icon) {
    case MessageIcon::None:
        box.setIcon(QMessageBox::NoIcon);
        break;
    case MessageIcon::Critical:
        box.setIcon(QMessageBox::Critical);
        break;
    case MessageIcon::Question:
        box.setIcon(QMessageBox::Question);
        break;
    case MessageIcon::Exclamation:
        box.setIcon(QMessageBox::Warning);
        break;
    case MessageIcon::Information:
        box.setIcon(QMessageBox::Information);
        break;
    }
    QMessageBox::StandardButtons standard;
    switch (buttons) {
    case MessageButtons::Ok:
        standard = QMessageBox::Ok;
        break;
    case MessageButtons::OkCancel:
        standard = QMessageBox::Ok | QMessageBox::Cancel;
        break;
    case MessageButtons::YesNo:
        standard = QMessageBox::Yes | QMessageBox::No;
        break;
    case MessageButtons::YesNoCancel:
        standard = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        break;
    }
    box.setStandardButtons(standard);
    const auto toButton = [](MessageAnswer answer) {
        switch (answer) {
        case MessageAnswer::Ok:
            return QMessageBox::Ok;
        case MessageAnswer::Cancel:
            return QMessageBox::Cancel;
        case MessageAnswer::Yes:
            return QMessageBox::Yes;
        case MessageAnswer::No:
            return QMessageBox::No;
        }
        return QMessageBox::Ok;
    };
    if (standard.testFlag(toButton(defaultAnswer)))
        box.setDefaultButton(toButton(defaultAnswer));
    switch (box.exec()) {
    case QMessageBox::Yes:
        return MessageAnswer::Yes;
    case QMessageBox::No:
        return MessageAnswer::No;
    case QMessageBox::Cancel:
        return MessageAnswer::Cancel;
    default:
        return buttons == MessageButtons::YesNo ? MessageAnswer::No : MessageAnswer::Ok;
    }
}

std::optional<QString> QtPrompter::input(const QString &prompt, const QString &title,
                                         const QString &defaultText) {
    bool ok = false;
    const QString text = QInputDialog::getText(parentWidget(), title.isEmpty() ? m_title : title,
                                               prompt, QLineEdit::Normal, defaultText, &ok);
    if (!ok)
        return std::nullopt;
    return text;
}

std::optional<QString> QtPrompter::multiLineInput(const QString &prompt, const QString &title,
                                                  const QString &defaultText) {
    QInputDialog dialog(parentWidget());
    dialog.setWindowTitle(title.isEmpty() ? m_title : title);
    dialog.setLabelText(prompt);
    dialog.setOption(QInputDialog::UsePlainTextEditForTextInput);
    dialog.setTextValue(defaultText);
    // A long note is read and edited as the lines it wraps into.
    if (auto *editor = dialog.findChild<QPlainTextEdit *>())
        editor->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.textValue();
}

std::optional<QString> QtPrompter::openFile(const FileDialogRequest &request) {
    // A proposed file name preselects that file in the folder.
    const QString start = request.fileName.isEmpty()
                              ? request.folder
                              : QDir(request.folder).filePath(request.fileName);
    const QString path = QFileDialog::getOpenFileName(parentWidget(), request.title, start,
                                                      qtFileFilter(request.filter));
    if (path.isEmpty())
        return std::nullopt;
    return path;
}

std::optional<QString> QtPrompter::saveFile(const FileDialogRequest &request) {
    QFileDialog dialog(parentWidget(), request.title, request.folder, qtFileFilter(request.filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(request.defaultExtension);
    if (!request.fileName.isEmpty())
        dialog.selectFile(request.fileName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().constFirst();
}

std::optional<quint32> QtPrompter::color(quint32 initial) {
    const QColor start(int(initial & 0xFF), int((initial >> 8) & 0xFF),
                       int((initial >> 16) & 0xFF));
    const QColor chosen = QColorDialog::getColor(start, parentWidget());
    if (!chosen.isValid())
        return std::nullopt;
    return quint32(chosen.red()) | (quint32(chosen.green()) << 8) | (quint32(chosen.blue()) << 16);
}

std::optional<FontChoice> QtPrompter::font(const FontChoice &initial) {
    // A template names fonts as the printer knows them ("Arial"); the dialog lists only the
    // families installed here, so it is started at the family the name resolves to, or it would
    // show its own default and hand that back on OK.
    const QString shown = QFontInfo(QFont(initial.name)).family();
    QFont start(shown, initial.size);
    start.setBold(initial.bold);
    start.setItalic(initial.italic);
    start.setUnderline(initial.underline);
    QFontDialog dialog(start, parentWidget());
    dialog.setObjectName(QStringLiteral("dlgFont"));
    dialog.setCurrentFont(start);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    const QFont chosen = dialog.selectedFont();
    // The family the name resolved to, kept, is the name the box already had.
    const QString family =
        chosen.family().compare(shown, Qt::CaseInsensitive) == 0 ? initial.name : chosen.family();
    return FontChoice{family, chosen.pointSize() > 0 ? chosen.pointSize() : initial.size,
                      chosen.bold(), chosen.italic(), chosen.underline()};
}

std::optional<QString> QtPrompter::folder(const QString &title, const QString &start) {
    const QString path = QFileDialog::getExistingDirectory(parentWidget(), title, start);
    if (path.isEmpty())
        return std::nullopt;
    return path;
}

void QtPrompter::status(const QString &text) {
    if (m_statusSink) {
        m_statusSink(text);
        return;
    }
    // The window in front, or the main window a dialog of it belongs to.
    for (QWidget *window = parentWidget(); window; window = window->parentWidget()) {
        if (auto *main = qobject_cast<QMainWindow *>(window->window())) {
            main->statusBar()->showMessage(text);
            return;
        }
        window = window->window();
    }
    if (!text.isEmpty())
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

bool QtPrompter::openDocument(const QString &path, const QString &description) {
    Q_UNUSED(description);
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

std::optional<PrinterSetup> QtPrompter::printerSetup(const PrinterSetup &initial) {
    PrinterPropertiesDialog dialog(initial, parentWidget());
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.setup();
}

} // namespace tavrel
