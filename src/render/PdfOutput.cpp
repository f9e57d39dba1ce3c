#include "render/PdfOutput.h"

#include "base/RuntimeError.h"
#include "base/TextFile.h"
#include "render/CancelToken.h"
#include "render/PageEngine.h"
#include "render/PageLayouts.h"
#include "render/PageReplay.h"
#include "render/PdfNavigation.h"

#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>

namespace tavrel {

namespace {

// Gathers the PDF writer's many small writes (an object header, a number, a page's stream in
// pieces) into large blocks for the file beneath, which is unbuffered so that a full disk shows
// at once. A block the file does not take whole fails this device's writes from then on; the
// file records the short write for the caller.
class BlockWrites : public QIODevice {
public:
    explicit BlockWrites(QIODevice &target)
        : m_target(target) {
        m_block.reserve(BlockSize);
        QIODevice::open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }

    bool isSequential() const override { return true; }
    bool flushBlock() {
        if (m_failed)
            return false;
        if (!m_block.isEmpty() && m_target.write(m_block) != m_block.size())
            m_failed = true;
        m_block.resize(0); // keeps the capacity
        return !m_failed;
    }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 length) override {
        if (m_failed)
            return -1;
        if (m_block.size() + length > BlockSize && !flushBlock())
            return -1;
        if (length >= BlockSize) {
            if (m_target.write(data, length) != length) {
                m_failed = true;
                return -1;
            }
            return length;
        }
        m_block.append(data, length);
        return length;
    }

private:
    static constexpr qint64 BlockSize = 256 * 1024;
    QIODevice &m_target;
    QByteArray m_block;
    bool m_failed = false;
};

} // namespace

bool writePdf(const PageEngine &engine, const QString &path,
              const std::function<void(int page)> &progress, const CancelToken *cancel) {
    // Written beside the target and renamed over it only when complete, so that a failed or
    // cancelled export never leaves a truncated PDF nor touches the one already there. A
    // folder that does not exist is reported as the PDF writer always has, as error 75.
    if (!path.isEmpty() && !QFileInfo(path).absoluteDir().exists())
        throw RuntimeError(ErrorNumber::PathFileAccessError,
                           QStringLiteral("Cannot write %1").arg(path));
    struct Cancelled {};
    try {
        const auto paint = [&](QIODevice &file) {
            BlockWrites device(file);
            QPdfWriter writer(&device);
            // One device unit per twip: the display list is drawn as recorded.
            writer.setResolution(1440);
            writer.setTitle(engine.DocName());
            writer.setCreator(QStringLiteral("Tavrel"));
            const int count = int(engine.pages().size());
            if (count > 0)
                writer.setPageLayout(pageLayoutOf(engine.page(1)));
            QPainter painter;
            if (!painter.begin(&writer))
                throw RuntimeError(ErrorNumber::PathFileAccessError,
                                   QStringLiteral("Cannot write %1").arg(path));
            for (int number = 1; number <= count; ++number) {
                if (cancel && cancel->isCancelled()) {
                    painter.end();
                    throw Cancelled{}; // the temporary file is discarded
                }
                if (number > 1) {
                    const QPageLayout layout = pageLayoutOf(engine.page(number));
                    if (!layout.isEquivalentTo(writer.pageLayout()))
                        writer.setPageLayout(layout);
                    writer.newPage();
                }
                paintPage(painter, engine, number);
                if (progress)
                    progress(number);
            }
            if (!painter.end())
                throw RuntimeError(ErrorNumber::PathFileAccessError,
                                   QStringLiteral("Cannot write %1").arg(path));
            device.flushBlock(); // a short write shows in the file's own record
        };
        // Qt's PDF, then the outline, page labels and document information added (qpdf).
        TextFile::writeAtomically(path, [&](QIODevice &file) {
            BlockWrites device(file);
            PdfNavigation::write(device, path, engine.navigation(), paint);
            device.flushBlock();
        });
    } catch (const Cancelled &) {
        return false;
    }
    return true;
}

} // namespace tavrel
