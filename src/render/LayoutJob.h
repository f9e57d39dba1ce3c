#pragma once

#include "base/RuntimeError.h"
#include "render/CancelToken.h"
#include "render/PageHandover.h"

#include <QElapsedTimer>
#include <QObject>

#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

class QThread;

namespace tavrel {

class PageEngine;

// Runs a print job off the window thread. The work lays the document out on the job's own
// engine, which only the worker thread touches; every page it finishes is copied and published
// (PageBatch) to the thread that owns the LayoutJob, where it is put into the target engine
// that the preview reads. When the work ends, the whole document is published once more, so
// that what was drawn over finished pages afterwards (the "Page n of  m" pass, frames of a
// section) reaches the target too.
//
// The cancel token is handed to the work, which checks it between rows and pages. Progress (the
// pages laid out so far) and the end are reported on the owner's thread, through the callbacks
// and the signals.
class LayoutJob : public QObject {
    Q_OBJECT

public:
    using Work = std::function<void(PageEngine &engine, const CancelToken &cancel)>;
    using ProgressCallback = std::function<void(int pagesLaidOut)>;

    // Published pages reach the target at most this often (the first at once), so that a fast
    // layout does not keep the window thread busy with refreshing.
    static constexpr int DeliveryInterval = 100; // ms

    explicit LayoutJob(Work work, QObject *parent = nullptr);
    // Cancels a running job and waits for its thread.
    ~LayoutJob() override;

    // Where published pages go (owner's thread); null keeps them in the batches only.
    void setTarget(PageEngine *target) { m_target = target; }
    // Called on the owner's thread after each published batch.
    void setProgressCallback(ProgressCallback callback) { m_progress = std::move(callback); }

    void start();
    // Raises the cancel token; the work stops at its next check. Safe from any thread.
    void cancel() { m_cancel.cancel(); }
    const CancelToken &cancelToken() const { return m_cancel; }

    bool isRunning() const { return m_running; }
    bool isFinished() const { return m_finished; }
    bool wasCancelled() const { return m_finished && m_cancel.isCancelled(); }
    // The error that ended the work, if one did.
    const std::optional<RuntimeError> &error() const { return m_error; }
    // Pages the work had laid out at the last published batch.
    int pagesLaidOut() const { return m_pagesLaidOut; }

    // Runs the owner's event loop until the job has finished (or msecs passed, -1 for no limit);
    // returns whether it finished.
    bool waitForFinished(int msecs = -1);

signals:
    void pagesPublished(int pagesLaidOut);
    void finished();

private:
    void runOnWorker();
    void publish(PageBatch batch, bool last);
    void deliverSoon();
    void deliver();

    Work m_work;
    ProgressCallback m_progress;
    PageEngine *m_target = nullptr;
    CancelToken m_cancel;
    std::unique_ptr<QThread> m_thread;

    // Filled by the worker, emptied by the owner.
    std::mutex m_mutex;
    std::deque<PageBatch> m_batches;
    bool m_workDone = false;
    std::optional<RuntimeError> m_workError;

    // Whether a delivery is on its way to the owner; raised by the worker, cleared by the owner.
    std::atomic<bool> m_deliveryQueued{false};

    // Owner's thread only.
    QElapsedTimer m_sinceDelivery;
    bool m_running = false;
    bool m_finished = false;
    std::optional<RuntimeError> m_error;
    int m_pagesLaidOut = 0;
};

} // namespace tavrel
