#include "base/ui/CommandTable.h"

#include <QAction>
#include <QMenu>
#include <QToolBar>
#include <QWidget>

namespace tavrel {

CommandTable::CommandTable(QWidget *owner)
    : m_owner(owner) {}

CommandTable::Command CommandTable::command(const QString &name, const QString &text,
                                            std::function<void()> run,
                                            QList<QKeySequence> shortcuts) {
    Command c;
    c.name = name;
    c.text = text;
    c.shortcuts = std::move(shortcuts);
    c.run = std::move(run);
    return c;
}

CommandTable::Command CommandTable::withoutAction(const QString &name, std::function<void()> run) {
    Command c;
    c.name = name;
    c.run = std::move(run);
    c.hasAction = false;
    return c;
}

void CommandTable::add(Command command) {
    if (m_index.contains(command.name)) {
        remember(command.name);
        return;
    }
    Entry entry{std::move(command), nullptr};
    const Command &c = entry.command;
    if (c.hasAction) {
        auto *action = new QAction(c.text, m_owner);
        action->setObjectName(c.name);
        if (!c.shortcuts.isEmpty())
            action->setShortcuts(c.shortcuts);
        if (!c.iconText.isEmpty())
            action->setIconText(c.iconText);
        if (!c.toolTip.isEmpty())
            action->setToolTip(c.toolTip);
        if (!c.statusTip.isEmpty())
            action->setStatusTip(c.statusTip);
        if (!c.icon.isNull())
            action->setIcon(c.icon);
        action->setCheckable(bool(c.checked));
        const QString name = c.name;
        QObject::connect(action, &QAction::triggered, m_owner, [this, name] { dispatch(name); });
        m_owner->addAction(action);
        entry.action = action;
    }
    m_index.insert(c.name, m_entries.size());
    m_entries.push_back(std::move(entry));
}

QStringList CommandTable::names() const {
    QStringList names;
    names.reserve(qsizetype(m_entries.size()));
    for (const Entry &entry : m_entries)
        names.append(entry.command.name);
    return names;
}

QAction *CommandTable::action(const QString &name) {
    QAction *found = std::as_const(*this).action(name);
    if (!found)
        remember(name);
    return found;
}

QAction *CommandTable::action(const QString &name) const {
    const auto at = m_index.constFind(name);
    return at == m_index.cend() ? nullptr : m_entries[*at].action;
}

void CommandTable::fill(QWidget *widget, const QStringList &names) {
    for (const QString &name : names) {
        if (name.isEmpty()) {
            if (auto *menu = qobject_cast<QMenu *>(widget))
                menu->addSeparator();
            else if (auto *bar = qobject_cast<QToolBar *>(widget))
                bar->addSeparator();
            continue;
        }
        if (QAction *found = action(name))
            widget->addAction(found);
    }
}

bool CommandTable::dispatch(const QString &name) {
    const auto at = m_index.constFind(name);
    if (at == m_index.cend())
        return false;
    // A copy: the command may close the window that owns the table.
    const std::function<void()> run = m_entries[*at].command.run;
    if (run)
        run();
    return true;
}

void CommandTable::trigger(const QString &name) {
    if (!dispatch(name))
        remember(name);
}

void CommandTable::refresh() {
    for (const Entry &entry : m_entries) {
        if (!entry.action)
            continue;
        if (entry.command.enabled)
            entry.action->setEnabled(entry.command.enabled());
        if (entry.command.checked)
            entry.action->setChecked(entry.command.checked());
    }
}

void CommandTable::remember(const QString &name) {
    qWarning("CommandTable: no command \"%s\" (or it is named twice)", qPrintable(name));
    m_unknown.append(name);
}

} // namespace tavrel
