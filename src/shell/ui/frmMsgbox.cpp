#include "shell/ui/frmMsgbox.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace tavrel {

frmMsgbox::frmMsgbox(QWidget *parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmMsgbox"));
    setWindowTitle(QStringLiteral("Tavrel"));
    setModal(false);

    m_message = new QLabel(QStringLiteral("Please wait..."), this);
    m_message->setObjectName(QStringLiteral("lblMessage"));
    m_message->setWordWrap(true);
    m_message->setMinimumWidth(320);
    m_bar = new QProgressBar(this);
    m_bar->setObjectName(QStringLiteral("prgProgress"));
    m_bar->setRange(0, 0);
    m_elapsed = new QLabel(this);
    m_elapsed->setObjectName(QStringLiteral("lblElapsed"));
    m_cancel = new QPushButton(QStringLiteral("Cancel"), this);
    m_cancel->setObjectName(QStringLiteral("cmdCancel"));
    m_cancel->setToolTip(QStringLiteral("Stop laying out the report; the pages done so far stay"));

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_message);
    layout->addWidget(m_bar);
    auto *row = new QHBoxLayout;
    row->addWidget(m_elapsed, 1);
    row->addWidget(m_cancel);
    layout->addLayout(row);

    connect(m_cancel, &QPushButton::clicked, this, &frmMsgbox::requestStop);
    // The clock shows the time taken while the job runs.
    m_clock = new QTimer(this);
    m_clock->setInterval(500);
    connect(m_clock, &QTimer::timeout, this, &frmMsgbox::showElapsed);
    restart();
}

void frmMsgbox::setMessage(const QString &text) {
    m_message->setText(text);
}

QString frmMsgbox::message() const {
    return m_message->text();
}

void frmMsgbox::setProgress(int value, int maximum) {
    if (m_bar->maximum() != maximum)
        m_bar->setRange(0, std::max(0, maximum));
    m_bar->setValue(maximum > 0 ? std::clamp(value, 0, maximum) : 0);
}

int frmMsgbox::value() const {
    return m_bar->value();
}

int frmMsgbox::maximum() const {
    return m_bar->maximum();
}

bool frmMsgbox::report(int value, int maximum) {
    setProgress(value, maximum);
    if (m_sinceEvents.elapsed() >= EventInterval) {
        QCoreApplication::processEvents();
        m_sinceEvents.restart();
    }
    return !m_stop;
}

void frmMsgbox::restart() {
    m_stop = false;
    m_cancel->setEnabled(true);
    m_cancel->setText(QStringLiteral("Cancel"));
    m_started.start();
    m_sinceEvents.start();
    showElapsed();
    m_clock->start();
}

void frmMsgbox::requestStop() {
    if (m_stop)
        return;
    m_stop = true;
    m_cancel->setEnabled(false);
    m_cancel->setText(QStringLiteral("Stopping..."));
    emit stopRequestedChanged(true);
}

void frmMsgbox::showElapsed() {
    const qint64 seconds = m_started.elapsed() / 1000;
    m_elapsed->setText(QStringLiteral("Time taken: %1:%2")
                           .arg(seconds / 60)
                           .arg(seconds % 60, 2, 10, QLatin1Char('0')));
}

void frmMsgbox::finish() {
    m_clock->stop();
    hide();
}

void frmMsgbox::closeEvent(QCloseEvent *event) {
    // The user closing the box while the job runs means the same as Cancel; the program
    // closing it does not.
    if (event->spontaneous())
        requestStop();
    m_clock->stop();
    event->accept();
}

void frmMsgbox::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Escape) {
        requestStop();
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

} // namespace tavrel
