#include "render/OffThread.h"

#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <exception>
#include <memory>

namespace tavrel {

void runOffThread(const std::function<void()> &work, const std::function<void()> &tick,
                  int intervalMs) {
    std::exception_ptr failure;
    std::unique_ptr<QThread> thread(QThread::create([&work, &failure] {
        try {
            work();
        } catch (...) {
            failure = std::current_exception();
        }
    }));
    QEventLoop loop;
    // QThread::finished is delivered to the loop's thread once the worker is done.
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    QTimer timer;
    if (tick) {
        timer.setInterval(intervalMs);
        QObject::connect(&timer, &QTimer::timeout, &loop, tick);
        timer.start();
    }
    thread->start();
    loop.exec();
    thread->wait();
    timer.stop();
    if (tick)
        tick();
    if (failure)
        std::rethrow_exception(failure);
}

} // namespace tavrel
