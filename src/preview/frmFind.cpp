#include "preview/frmFind.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tavrel {

frmFind::frmFind(FindCallback find, QWidget *parent)
    : QDialog(parent)
    , m_callback(std::move(find)) {
    setObjectName(QStringLiteral("frmFind"));
    setWindowTitle(QStringLiteral("Find"));
    setModal(false);

    auto *label = new QLabel(QStringLiteral("Find &what:"), this);
    m_text = new QLineEdit(this);
    m_text->setObjectName(QStringLiteral("txtFind"));
    m_text->setMinimumWidth(240);
    m_text->setClearButtonEnabled(true);
    label->setBuddy(m_text);
    m_matchCase = new QCheckBox(QStringLiteral("Match &case"), this);
    m_matchCase->setObjectName(QStringLiteral("chkMatchCase"));

    m_find = new QPushButton(QStringLiteral("&Find"), this);
    m_find->setObjectName(QStringLiteral("cmdFind"));
    m_find->setDefault(true);
    m_find->setEnabled(false);
    m_find->setToolTip(QStringLiteral("Find the text from the current page on; press again for "
                                      "the next match"));
    m_exit = new QPushButton(QStringLiteral("Close"), this);
    m_exit->setObjectName(QStringLiteral("cmdExit"));

    auto *grid = new QGridLayout(this);
    grid->addWidget(label, 0, 0);
    grid->addWidget(m_text, 0, 1);
    grid->addWidget(m_matchCase, 1, 1);
    auto *buttons = new QVBoxLayout;
    buttons->addWidget(m_find);
    buttons->addWidget(m_exit);
    buttons->addStretch(1);
    grid->addLayout(buttons, 0, 2, 2, 1);
    grid->setColumnStretch(1, 1);

    connect(m_text, &QLineEdit::textChanged, this,
            [this](const QString &text) { m_find->setEnabled(!text.isEmpty()); });
    connect(m_find, &QPushButton::clicked, this, &frmFind::find);
    connect(m_exit, &QPushButton::clicked, this, &QDialog::close);
}

void frmFind::activate() {
    m_text->setFocus();
    m_text->selectAll();
}

void frmFind::find() {
    if (m_text->text().isEmpty() || !m_callback)
        return;
    m_callback(m_text->text(), m_matchCase->isChecked());
}

} // namespace tavrel
