#pragma once

#include "base/ui/CommandTable.h"
#include "spec/FieldLengths.h"

#include <QDialog>
#include <QHash>

class QLineEdit;

namespace tavrel {

class JobFile;
class Prompter;

// The field length editor: every field code with its caption, length (`txtFL`) and label
// (`txtLbl`), grouped on tabs. OK writes every key to the job file, Cancel writes nothing,
// Default restores the built-in lengths.
class frmFieldLength : public QDialog {
    Q_OBJECT

public:
    // Shows `lengths` (the program's own, as read from the job); OK writes them with the user's
    // changes through `job` and then takes the changes into `lengths`.
    frmFieldLength(JobFile &job, FieldLengths &lengths, Prompter &prompter,
                   QWidget *parent = nullptr);

    // "cmdOK", "cmdCancel", "cmdDefault"; false for an unknown command.
    bool dispatch(const QString &command);
    const CommandTable &commands() const { return m_commands; }

    QLineEdit *lengthBox(const QString &code) const { return m_lengthBoxes.value(code); }
    QLineEdit *labelBox(const QString &code) const { return m_labelBoxes.value(code); }

private:
    void buildUi();
    void fill();
    void accept() override;
    void restoreDefaults();

    JobFile &m_job;
    FieldLengths &m_lengths;
    Prompter &m_prompter;
    QHash<QString, QLineEdit *> m_lengthBoxes;
    QHash<QString, QLineEdit *> m_labelBoxes;
    CommandTable m_commands{this};
};

} // namespace tavrel
