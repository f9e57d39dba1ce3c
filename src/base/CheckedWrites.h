#pragma once

#include <QIODevice>

namespace tavrel {

// Hands every write on to the file beneath and remembers a short one. Writers such as Qt's PDF
// engine do not look at what a write returns, and a write that runs into a full disk or the
// file-size limit returns the part that fit without any error being set; the caller asks
// shortWrite() when the writer is done.
class CheckedWrites : public QIODevice {
public:
    explicit CheckedWrites(QIODevice &file)
        : m_file(file) {
        QIODevice::open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }

    bool shortWrite() const { return m_short; }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 length) override {
        if (m_short || m_file.write(data, length) != length) {
            m_short = true;
            return -1;
        }
        return length;
    }

private:
    QIODevice &m_file;
    bool m_short = false;
};

} // namespace tavrel
