#include "render/LayoutJob.h"

#include "render/PageEngine.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

namespace tavrel {

LayoutJob::LayoutJob(Work work, QObject *parent)
    : QObject(parent)
    , m_work(std::move(work)) {}

LayoutJob::~LayoutJob() {
    if (m_thread) {
        m_cancel.cancel();
        m_thread->wait();
    }
}

void LayoutJob::start() {
    if (m_running || m_finished)
        return;
    m_running = true;
    m_thread.reset(QThread::create([this] { runOnWorker(); }));
    m_thread->setObjectName(QStringLiteral("LayoutJob"));
    m_thread->start();
}

void LayoutJob::runOnWorker() {
    PageEngine engine;
    // A page is finished when the next one starts; publish it then. The engine calls its
    // listeners on this thread.
    engine.addNewPageListener([this, &engine](int page) {
        if (page > 1)
            publish(copyPages(engine, page - 1, page - 1), false);
    });
    std::optional<RuntimeError> error;
    try {
        m_work(engine, m_cancel);
    } catch (const RuntimeError &e) {
        error = e;
    }
    // Everything once more: pages drawn over after they were first published, and the last.
    PageBatch all = copyPages(engine, 1, engine.PageCount());
    {
        const std::lock_guard lock(m_mutex);
        m_workError = std::move(error);
    }
    publish(std::move(all), true);
}

void LayoutJob::publish(PageBatch batch, bool last) {
    {
        const std::lock_guard lock(m_mutex);
        m_batches.push_back(std::move(batch));
        if (last)
            m_workDone = true;
    }
    // One delivery at a time is under way; it takes every batch there is by then. It runs on
    // the owner's thread and is dropped if the job is gone by then.
    // The end goes at once, whatever is under way.
    if (!m_deliveryQueued.exchange(true) || last)
        QMetaObject::invokeMethod(this, &LayoutJob::deliverSoon, Qt::QueuedConnection);
}

void LayoutJob::deliverSoon() {
    bool done = false;
    {
        const std::lock_guard lock(m_mutex);
        done = m_workDone;
    }
    const qint64 since = m_sinceDelivery.isValid() ? m_sinceDelivery.elapsed() : DeliveryInterval;
    if (done || since >= DeliveryInterval)
        deliver();
    else
        QTimer::singleShot(int(DeliveryInterval - since), this, &LayoutJob::deliver);
}

void LayoutJob::deliver() {
    std::deque<PageBatch> batches;
    bool done = false;
    std::optional<RuntimeError> error;
    {
        const std::lock_guard lock(m_mutex);
        // Cleared with the batches taken: a page published from now on asks again.
        m_deliveryQueued = false;
        batches.swap(m_batches);
        done = m_workDone;
        error = m_workError;
    }
    m_sinceDelivery.start();
    if (batches.empty() && !done)
        return;
    for (PageBatch &batch : batches) {
        m_pagesLaidOut = batch.documentPages;
        if (m_target)
            m_target->adoptPages(std::move(batch));
    }
    if (!batches.empty()) {
        if (m_progress)
            m_progress(m_pagesLaidOut);
        emit pagesPublished(m_pagesLaidOut);
    }
    if (done && m_running) {
        m_thread->wait();
        m_running = false;
        m_finished = true;
        m_error = std::move(error);
        emit finished();
    }
}

bool LayoutJob::waitForFinished(int msecs) {
    if (m_finished)
        return true;
    if (!m_running)
        return false;
    QEventLoop loop;
    connect(this, &LayoutJob::finished, &loop, &QEventLoop::quit);
    if (msecs >= 0)
        QTimer::singleShot(msecs, &loop, &QEventLoop::quit);
    loop.exec();
    return m_finished;
}

} // namespace tavrel
