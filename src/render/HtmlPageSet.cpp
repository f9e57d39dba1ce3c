#include "render/HtmlPageSet.h"

#include "base/RuntimeError.h"
#include "base/TextFile.h"
#include "base/Windows1252.h"
#include "render/HtmlFragments.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QUrl>

#include <filesystem>

namespace tavrel {

namespace {

const QLatin1String HtmlExtension(".htm");

// The swap of a page set takes milliseconds; a lock older than this was left by a killed export.
constexpr int LockStaleAfter = 30000;
// How long an export waits for another one's swap into the same folder.
constexpr int LockWait = 60000;

// The page frame is ours: HTML 4.01 Transitional named without its system identifier, which is a
// valid document type and keeps browsers in the lenient mode the fragments were written for (they
// give font sizes without a unit).
const QLatin1String
    PageStart("<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01 Transitional//EN\">\r\n"
              "<html>\r\n<head>\r\n<meta http-equiv=\"Content-Type\" "
              "content=\"text/html; charset=windows-1252\">\r\n<title>");
const QLatin1String TitleEnd("</title>\r\n");
const QLatin1String PageBody("</head>\r\n<body>\r\n");
const QLatin1String PageEnd("\r\n</body>\r\n</html>\r\n");

void appendCharacterReference(QByteArray &bytes, char32_t codePoint) {
    bytes += "&#";
    bytes += QByteArray::number(quint32(codePoint));
    bytes += ';';
}

} // namespace

HtmlPageSet::HtmlPageSet(QString exportFile)
    : m_exportFile(std::move(exportFile)) {
    m_base = m_exportFile;
    if (m_base.endsWith(HtmlExtension, Qt::CaseInsensitive))
        m_base.chop(HtmlExtension.size());
}

void HtmlPageSet::setBottomBar(int number, const QString &barTemplate) {
    page(number).bottomBar = barTemplate;
}

void HtmlPageSet::setPageStyle(int number, const QString &rules) {
    page(number).style = rules;
}

int HtmlPageSet::addPage() {
    m_pages.append(Page{});
    return pageCount();
}

void HtmlPageSet::append(const QString &fragment) {
    if (m_pages.isEmpty())
        addPage();
    m_pages.last().fragments += fragment;
}

void HtmlPageSet::append(int number, const QString &fragment) {
    page(number).fragments += fragment;
}

HtmlPageSet::Page &HtmlPageSet::page(int number) {
    if (number < 1 || number > pageCount())
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    return m_pages[number - 1];
}

const HtmlPageSet::Page &HtmlPageSet::page(int number) const {
    if (number < 1 || number > pageCount())
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    return m_pages[number - 1];
}

QString HtmlPageSet::filePath(int number) const {
    if (pageCount() <= 1)
        return m_base + HtmlExtension;
    return m_base + QString::number(number) + HtmlExtension;
}

QString HtmlPageSet::linkAttribute(int number) const {
    // The pages lie side by side, so a link names the file alone. Percent-encoding keeps a base
    // name with blanks, "#" or "%" a working link.
    const QString name = QFileInfo(filePath(number)).fileName();
    return QLatin1String(" href=\"") + QString::fromLatin1(QUrl::toPercentEncoding(name)) +
           QLatin1String("\"");
}

QString HtmlPageSet::filledBar(const QString &barTemplate, int number) const {
    if (barTemplate.isEmpty())
        return {};
    const int count = pageCount();
    // The first page's "previous" and the last page's "next" point at the page itself.
    const QStringList links = {linkAttribute(1), linkAttribute(qMax(1, number - 1)),
                               linkAttribute(qMin(count, number + 1)), linkAttribute(count)};
    return fillTemplate(barTemplate, links, {number, count});
}

QString HtmlPageSet::pageText(int number) const {
    const Page &content = page(number);
    QString text = PageStart;
    text += HtmlFragments::escapeText(QFileInfo(m_base).fileName());
    text += TitleEnd;
    if (!content.style.isEmpty())
        text += QLatin1String("<style type=\"text/css\">\r\n") + content.style +
                QLatin1String("</style>\r\n");
    text += PageBody;
    text += filledBar(m_topBar, number);
    text += content.fragments;
    text += filledBar(content.bottomBar, number);
    text += PageEnd;
    return text;
}

QString HtmlPageSet::lockFilePath(const QString &exportFile) {
    const QFileInfo info(exportFile);
    return info.absoluteDir().filePath(QLatin1Char('.') + info.fileName() +
                                       QStringLiteral(".lock"));
}

QStringList HtmlPageSet::write() const {
    if (pageCount() == 0)
        return {};
    const QFileInfo target(m_exportFile);
    const QDir folder = target.absoluteDir();
    if (!folder.exists())
        throw RuntimeError(ErrorNumber::PathNotFound);
    const QString baseName = QFileInfo(m_base).fileName();

    // 1. The new set, complete, in a folder of its own beside the target (same file system, so
    // the pages can be renamed into place).
    const QString stagingPrefix = QLatin1Char('.') + baseName + QStringLiteral(".pages.");
    QTemporaryDir staging(folder.filePath(stagingPrefix + QStringLiteral("XXXXXX")));
    if (!staging.isValid())
        throw RuntimeError(ErrorNumber::PathFileAccessError, staging.errorString());
    QStringList staged;
    QStringList written;
    for (int number = 1; number <= pageCount(); ++number) {
        const QString name = QFileInfo(filePath(number)).fileName();
        const QString path = staging.filePath(name);
        TextFile::writeAtomically(path, encode(pageText(number)));
        staged.append(path);
        written.append(folder.filePath(name));
    }

    // 2. The swap, under the folder's lock for this base name.
    QLockFile lock(lockFilePath(m_exportFile));
    lock.setStaleLockTime(LockStaleAfter);
    if (!lock.tryLock(LockWait))
        throw RuntimeError(ErrorNumber::PathFileAccessError,
                           QStringLiteral("Path/File access error: %1 is locked")
                               .arg(lock.error() == QLockFile::LockFailedError
                                        ? target.fileName()
                                        : lockFilePath(m_exportFile)));
    // The old set: the unnumbered page and every numbered one of this base.
    const QRegularExpression page(QLatin1Char('^') + QRegularExpression::escape(baseName) +
                                      QStringLiteral("([1-9][0-9]*)?\\.htm$"),
                                  QRegularExpression::CaseInsensitiveOption);
    QStringList old;
    for (const QString &name : folder.entryList({baseName + QStringLiteral("*")}, QDir::Files)) {
        if (page.match(name).hasMatch())
            old.append(name);
    }
    for (qsizetype i = 0; i < staged.size(); ++i) {
        std::error_code error;
        std::filesystem::rename(QFile::encodeName(staged.at(i)).toStdString(),
                                QFile::encodeName(written.at(i)).toStdString(), error);
        if (error)
            throw RuntimeError(ErrorNumber::PathFileAccessError,
                               QString::fromStdString(error.message()));
    }
    for (const QString &name : std::as_const(old)) {
        if (!written.contains(folder.filePath(name)))
            QFile::remove(folder.filePath(name));
    }
    // Folders of exports that were killed before their swap.
    const QDateTime quiet = QDateTime::currentDateTimeUtc().addSecs(-60);
    for (const QFileInfo &left : folder.entryInfoList({stagingPrefix + QStringLiteral("??????")},
                                                      QDir::Dirs | QDir::Hidden)) {
        if (left.absoluteFilePath() != QFileInfo(staging.path()).absoluteFilePath() &&
            left.lastModified().toUTC() < quiet)
            QDir(left.absoluteFilePath()).removeRecursively();
    }
    return written;
}

QString HtmlPageSet::fillTemplate(QStringView barTemplate, const QStringList &links,
                                  const QList<int> &numbers) {
    QString out;
    out.reserve(barTemplate.size() + 64);
    qsizetype nextLink = 0;
    qsizetype nextNumber = 0;
    for (qsizetype i = 0; i < barTemplate.size(); ++i) {
        const QChar c = barTemplate[i];
        const QChar following = i + 1 < barTemplate.size() ? barTemplate[i + 1] : QChar();
        if (c != QLatin1Char('%') || following.isNull()) {
            out += c;
            continue;
        }
        if (following == QLatin1Char('%')) {
            out += QLatin1Char('%');
        } else if (following == QLatin1Char('s')) {
            if (nextLink < links.size())
                out += links[nextLink++];
        } else if (following == QLatin1Char('d')) {
            if (nextNumber < numbers.size())
                out += QString::number(numbers[nextNumber++]);
        } else {
            out += c;
            continue;
        }
        ++i;
    }
    return out;
}

QByteArray HtmlPageSet::encode(QStringView text) {
    QByteArray bytes;
    bytes.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.unicode() < 0x80) {
            bytes += char(c.unicode());
            continue;
        }
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            appendCharacterReference(bytes, QChar::surrogateToUcs4(c, text[i + 1]));
            ++i;
            continue;
        }
        if (c.isSurrogate()) {
            appendCharacterReference(bytes, 0xFFFD); // a broken pair has no character to keep
            continue;
        }
        const QByteArray mapped = toWindows1252(text.mid(i, 1));
        if (mapped == "?")
            appendCharacterReference(bytes, c.unicode());
        else
            bytes += mapped;
    }
    return bytes;
}

} // namespace tavrel
