#pragma once

#include <QHash>
#include <QIcon>
#include <QKeySequence>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

class QAction;
class QWidget;

namespace tavrel {

// One window's commands in one place. Each entry names a command (the name its menu item,
// tool, shortcut, pop-up menu and the tests use), its menu text, shortcuts and tips, what it
// does, and when its item is enabled or checked. The table makes one QAction per entry, named
// after the command, and builds menus and tool bars from lists of names.
//
// A name the table does not hold, when a menu is built from it or the window's own wiring
// triggers it, is a misspelling in the program: it is remembered in unknownNames(), which the
// windows' tests check is empty.
class CommandTable {
public:
    struct Command {
        QString name;
        QString text;
        QList<QKeySequence> shortcuts; // the first is the one menus show
        std::function<void()> run;
        std::function<bool()> enabled; // none: always enabled
        std::function<bool()> checked; // set: the item is checkable and shows this state
        QString iconText;              // the tool bar's text when shorter than the menu's
        QString toolTip;               // empty: Qt's own (the text)
        QString statusTip;
        QIcon icon;
        // false: the command has no menu item; a tool widget or a menu's opening runs it.
        bool hasAction = true;

        // Shorthands for building an entry in one expression.
        Command checkedWhen(std::function<bool()> state) && {
            checked = std::move(state);
            return std::move(*this);
        }
        Command enabledWhen(std::function<bool()> state) && {
            enabled = std::move(state);
            return std::move(*this);
        }
        Command withIconText(const QString &toolText) && {
            iconText = toolText;
            return std::move(*this);
        }
        Command withToolTip(const QString &tip) && {
            toolTip = tip;
            return std::move(*this);
        }
    };

    // An entry with a menu item.
    static Command command(const QString &name, const QString &text, std::function<void()> run,
                           QList<QKeySequence> shortcuts = {});
    // An entry that a tool widget or a menu's opening runs; it has no menu item.
    static Command withoutAction(const QString &name, std::function<void()> run);

    // The actions are children of owner and added to it, so that their shortcuts work whether
    // or not a menu or tool bar shows them.
    explicit CommandTable(QWidget *owner);
    CommandTable(const CommandTable &) = delete;
    CommandTable &operator=(const CommandTable &) = delete;

    void add(Command command);

    bool contains(const QString &name) const { return m_index.contains(name); }
    QStringList names() const;
    // The entry's action; nullptr (and remembered) for a name the table does not hold or an
    // entry without an action.
    QAction *action(const QString &name);
    QAction *action(const QString &name) const;
    // Appends the named actions to a menu, tool bar or other widget; an empty name is a
    // separator.
    void fill(QWidget *widget, const QStringList &names);

    // Runs the command and returns true; false for a name the table does not hold. It runs
    // whatever its item's enabled state: the state only greys the item, and every command
    // makes its own checks (a shortcut-less caller such as a test reaches it all the same).
    bool dispatch(const QString &name);
    // dispatch() for the window's own wiring (signals of its widgets): an unknown name is
    // remembered as a misspelling.
    void trigger(const QString &name);
    // Sets every item's enabled and checked state from its entry.
    void refresh();

    // Every unknown name looked up, filled in or triggered, and every name added twice.
    QStringList unknownNames() const { return m_unknown; }

private:
    struct Entry {
        Command command;
        QAction *action = nullptr;
    };
    void remember(const QString &name);

    QWidget *m_owner;
    std::vector<Entry> m_entries;
    QHash<QString, std::size_t> m_index;
    QStringList m_unknown;
};

} // namespace tavrel
