#include "designer/frmFieldLength.h"

#include "base/ErrorReport.h"
#include "base/Prompter.h"
#include "base/ui/UserGuide.h"
#include "designer/FieldLengthCaptions.h"
#include "shell/JobFile.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSettings>
#include <QTabWidget>
#include <QVBoxLayout>

namespace tavrel {

frmFieldLength::frmFieldLength(JobFile &job, FieldLengths &lengths, Prompter &prompter,
                               QWidget *parent)
    : QDialog(parent)
    , m_job(job)
    , m_lengths(lengths)
    , m_prompter(prompter) {
    setObjectName(QStringLiteral("frmFieldLength"));
    setWindowTitle(QStringLiteral("Field Length"));
    buildUi();
    fill();
    const QSettings settings;
    restoreGeometry(settings.value(QStringLiteral("frmFieldLength/geometry")).toByteArray());
}

void frmFieldLength::buildUi() {
    auto *layout = new QVBoxLayout(this);
    auto *tabs = new QTabWidget(this);
    using FieldLengthCaptions::Group;
    QHash<int, QGridLayout *> grids;
    for (const Group group : {Group::Item, Group::Page, Group::Order}) {
        auto *scroll = new QScrollArea(tabs);
        scroll->setWidgetResizable(true);
        auto *page = new QWidget(scroll);
        auto *grid = new QGridLayout(page);
        grid->addWidget(new QLabel(QStringLiteral("<b>Field</b>"), page), 0, 0);
        grid->addWidget(new QLabel(QStringLiteral("<b>Code</b>"), page), 0, 1);
        grid->addWidget(new QLabel(QStringLiteral("<b>Length</b>"), page), 0, 2);
        grid->addWidget(new QLabel(QStringLiteral("<b>Label</b>"), page), 0, 3);
        grid->setColumnStretch(3, 1);
        scroll->setWidget(page);
        tabs->addTab(scroll, FieldLengthCaptions::groupTitle(group));
        grids.insert(int(group), grid);
    }
    for (const QString &code : FieldLengths::codes()) {
        QGridLayout *grid = grids.value(int(FieldLengthCaptions::groupOf(code)));
        QWidget *page = grid->parentWidget();
        const int row = grid->rowCount();
        auto *length = new QLineEdit(page);
        length->setObjectName(QStringLiteral("txtFL(%1)").arg(code));
        length->setValidator(new QIntValidator(0, 32767, length));
        length->setMaximumWidth(70);
        auto *label = new QLineEdit(page);
        label->setObjectName(QStringLiteral("txtLbl(%1)").arg(code));
        grid->addWidget(new QLabel(FieldLengthCaptions::captionOf(code), page), row, 0);
        grid->addWidget(new QLabel(code, page), row, 1);
        grid->addWidget(length, row, 2);
        grid->addWidget(label, row, 3);
        m_lengthBoxes.insert(code, length);
        m_labelBoxes.insert(code, label);
    }
    layout->addWidget(tabs);

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *ok = buttons->addButton(QDialogButtonBox::Ok);
    ok->setObjectName(QStringLiteral("cmdOK"));
    QPushButton *cancel = buttons->addButton(QDialogButtonBox::Cancel);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    QPushButton *defaults =
        buttons->addButton(QStringLiteral("&Default"), QDialogButtonBox::ResetRole);
    defaults->setObjectName(QStringLiteral("cmdDefault"));
    defaults->setToolTip(QStringLiteral("Restore the built-in lengths"));
    // The buttons are the box's own; the table only names what they do.
    const auto command = [this](QPushButton *button, std::function<void()> run) {
        CommandTable::Command c;
        c.name = button->objectName();
        c.run = std::move(run);
        c.hasAction = false;
        m_commands.add(std::move(c));
        const QString name = button->objectName();
        connect(button, &QPushButton::clicked, this, [this, name] { m_commands.trigger(name); });
    };
    command(ok, [this] { accept(); });
    command(cancel, [this] { reject(); });
    command(defaults, [this] { restoreDefaults(); });
    QPushButton *help = buttons->addButton(QDialogButtonBox::Help);
    help->setObjectName(QStringLiteral("cmdHelp"));
    m_commands.add(UserGuide::command([this] { UserGuide::open(m_prompter); }));
    connect(help, &QPushButton::clicked, this,
            [this] { m_commands.trigger(QStringLiteral("mnuHelpTopic")); });
    layout->addWidget(buttons);
    resize(620, 560);
}

void frmFieldLength::fill() {
    for (const QString &code : FieldLengths::codes()) {
        m_lengthBoxes.value(code)->setText(QString::number(m_lengths.length(code)));
        m_labelBoxes.value(code)->setText(m_lengths.label(code));
    }
}

bool frmFieldLength::dispatch(const QString &command) {
    return m_commands.dispatch(command);
}

void frmFieldLength::accept() {
    FieldLengths edited = m_lengths;
    for (const QString &code : FieldLengths::codes()) {
        const QString text = m_lengthBoxes.value(code)->text().trimmed();
        bool ok = false;
        const int length = text.toInt(&ok);
        if (!ok || length == 0) {
            m_prompter.message(QStringLiteral("Field Length Cannot be 'NULL' or '0'."), QString(),
                               MessageIcon::Exclamation);
            m_lengthBoxes.value(code)->setFocus();
            return;
        }
        edited.setLength(code, length);
        edited.setLabel(code, m_labelBoxes.value(code)->text());
    }
    try {
        m_job.writeFieldLengths(edited);
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Save Field Length."), error);
        return;
    }
    m_lengths = edited;
    QSettings settings;
    settings.setValue(QStringLiteral("frmFieldLength/geometry"), saveGeometry());
    QDialog::accept();
}

void frmFieldLength::restoreDefaults() {
    const FieldLengths builtIn = FieldLengths::builtIn();
    for (const QString &code : FieldLengths::codes())
        m_lengths.setLength(code, builtIn.length(code));
    fill();
}

} // namespace tavrel
