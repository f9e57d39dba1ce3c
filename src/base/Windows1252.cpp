#include "base/Windows1252.h"

#include <array>

namespace tavrel {

namespace {

// 0x80..0x9F; the undefined positions keep their own value.
constexpr std::array<char16_t, 32> highControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

} // namespace

QString fromWindows1252(const char *data, qsizetype size) {
    QString text(size, Qt::Uninitialized);
    char16_t *out = reinterpret_cast<char16_t *>(text.data());
    const auto *in = reinterpret_cast<const unsigned char *>(data);
    for (qsizetype i = 0; i < size; ++i) {
        const unsigned char byte = in[i];
        out[i] = (byte >= 0x80 && byte < 0xA0) ? highControls[byte - 0x80] : char16_t(byte);
    }
    return text;
}

QByteArray toWindows1252(QStringView text) {
    QByteArray bytes(text.size(), Qt::Uninitialized);
    char *out = bytes.data();
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c < 0x80 || (c >= 0xA0 && c < 0x100)) {
            out[i] = char(c);
            continue;
        }
        char mapped = '?';
        for (std::size_t k = 0; k < highControls.size(); ++k) {
            if (highControls[k] == c) {
                mapped = char(0x80 + k);
                break;
            }
        }
        out[i] = mapped;
    }
    return bytes;
}

} // namespace tavrel
