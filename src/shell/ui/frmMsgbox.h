#pragma once

#include <QDialog>
#include <QElapsedTimer>

class QLabel;
class QProgressBar;
class QPushButton;
class QTimer;

namespace tavrel {

// The progress dialog shown while a long job (the preview's layout, a PDF, a print) runs on a
// thread of its own: a message, a progress bar, the time taken so far and a Cancel button that
// raises a stop flag and emits stopRequestedChanged, which the window turns into the job's
// cancel token. Non-modal unless the caller makes it so, so that the preview already on screen
// stays usable while it is laid out.
class frmMsgbox : public QDialog {
    Q_OBJECT

public:
    // The event loop runs at most this often from report(): often enough to keep windows
    // painted and Cancel responsive, seldom enough not to slow the job down.
    static constexpr int EventInterval = 40; // ms

    explicit frmMsgbox(QWidget *parent = nullptr);

    void setMessage(const QString &text);
    QString message() const;
    // maximum 0 shows a busy bar for work of unknown length.
    void setProgress(int value, int maximum);
    int value() const;
    int maximum() const;

    // For a job on the window thread: shows value of maximum, lets pending events run when
    // EventInterval has passed since the last time, and returns false once Cancel was pressed.
    bool report(int value, int maximum);

    bool stopRequested() const { return m_stop; }
    // Clears the stop flag and restarts the clock, for the next job.
    void restart();
    // The job is over: stops the clock and hides the box, leaving the stop flag as it is.
    void finish();

    QPushButton *cmdCancel() const { return m_cancel; }

signals:
    void stopRequestedChanged(bool stop);

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void requestStop();
    void showElapsed();

    QLabel *m_message = nullptr;
    QProgressBar *m_bar = nullptr;
    QLabel *m_elapsed = nullptr;
    QPushButton *m_cancel = nullptr;
    QTimer *m_clock = nullptr;
    QElapsedTimer m_started;
    QElapsedTimer m_sinceEvents;
    bool m_stop = false;
};

} // namespace tavrel
