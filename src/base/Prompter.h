#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace tavrel {

enum class MessageIcon { None, Critical, Question, Exclamation, Information };
enum class MessageButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class MessageAnswer { Ok, Cancel, Yes, No };

// A font as the font dialog hands it back.
struct FontChoice {
    QString name;
    int size = 8;
    bool bold = false;
    bool italic = false;
    bool underline = false;
};

// The page orientation of the printed report: the templates' own, or one the user chose.
enum class OrientationChoice { FromTemplates, Portrait, Landscape };

// What the printer properties dialog shows and hands back. The sheet is always Letter: the
// report is laid out for it, whatever paper the printer holds.
struct PrinterSetup {
    QStringList printers; // the installed printers, in the system's order (shown, not returned)
    QString printer;      // the printer to print on
    int copies = 1;
    OrientationChoice orientation = OrientationChoice::FromTemplates;
    friend bool operator==(const PrinterSetup &, const PrinterSetup &) = default;
};

// File dialog filters are given in the classic "Description|*.ext|Description|*.*" form.
struct FileDialogRequest {
    QString title;
    QString filter;
    QString folder;
    QString defaultExtension; // without the dot, for save dialogs
    QString fileName;         // proposed file name
};

// The one door to the user. Windows and procedures never create message boxes or dialogs of
// their own; the real implementation shows Qt dialogs, tests script the answers.
class Prompter {
public:
    virtual ~Prompter() = default;

    // An empty title means the program's own title.
    virtual MessageAnswer message(const QString &text, const QString &title, MessageIcon icon,
                                  MessageButtons buttons = MessageButtons::Ok,
                                  MessageAnswer defaultAnswer = MessageAnswer::Ok) = 0;
    virtual std::optional<QString> input(const QString &prompt, const QString &title,
                                         const QString &defaultText = {}) = 0;
    // A text of several lines (a note); where no editor of its own exists, the one-line input.
    virtual std::optional<QString> multiLineInput(const QString &prompt, const QString &title,
                                                  const QString &defaultText = {}) {
        return input(prompt, title, defaultText);
    }
    virtual std::optional<QString> openFile(const FileDialogRequest &request) = 0;
    virtual std::optional<QString> saveFile(const FileDialogRequest &request) = 0;
    // Colours are engine colour numbers (red in the low byte).
    virtual std::optional<quint32> color(quint32 initial) = 0;
    // The dialog starts at `initial`; an answer names the family as `initial` does unless the
    // user picked another one.
    virtual std::optional<FontChoice> font(const FontChoice &initial) = 0;
    virtual std::optional<QString> folder(const QString &title, const QString &start) = 0;
    virtual void status(const QString &text) = 0;
    // Opens a file with the desktop's default application; false when nothing could open it.
    virtual bool openDocument(const QString &path, const QString &description) = 0;
    // The printer properties dialog; nothing when cancelled. A prompter without one (the
    // console) changes nothing.
    virtual std::optional<PrinterSetup> printerSetup(const PrinterSetup &initial);
};

// Splits "A|*.a|B|*.*" into pairs and returns Qt's "A (*.a);;B (*.*)" form, keeping each
// description as written when it already names its pattern.
QString qtFileFilter(const QString &classicFilter);

} // namespace tavrel
