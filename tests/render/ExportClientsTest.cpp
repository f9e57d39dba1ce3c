#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include "base/IniFile.h"
#include "render/ExportTestFiles.h"

#include <QElapsedTimer>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

#include <QTemporaryDir>
#include <QTest>
#include <QUrl>
#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace tavrel;

namespace {

constexpr int ClientTimeout = 120000;

// Runs a client program to its end; returns its standard output, or an error text in problem.
QByteArray runClient(const QString &program, const QStringList &arguments, QString &problem,
                     const QString &workingDirectory = {}) {
    QProcess process;
    process.setProgram(program);
    if (!workingDirectory.isEmpty())
        process.setWorkingDirectory(workingDirectory);
    process.setArguments(arguments);
    process.start();
    if (!process.waitForFinished(ClientTimeout)) {
        process.kill();
        process.waitForFinished();
        problem = program + QStringLiteral(" did not finish");
        return {};
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        problem = program + QStringLiteral(" failed: ") +
                  QString::fromLocal8Bit(process.readAllStandardError());
    return process.readAllStandardOutput();
}

QStringList chromiumArguments(const QString &profile) {
    return {QStringLiteral("--headless"),
            QStringLiteral("--no-sandbox"),
            QStringLiteral("--disable-gpu"),
            QStringLiteral("--disable-quic"),
            QStringLiteral("--no-first-run"),
            QStringLiteral("--disable-background-networking"),
            QStringLiteral("--disable-component-update"),
            QStringLiteral("--disable-sync"),
            QStringLiteral("--user-data-dir=") + profile};
}

// How much of the picture is not white: a blank render has none.
double inkShare(const QImage &image) {
    const QImage small = image.scaled(200, 260).convertToFormat(QImage::Format_RGB32);
    int ink = 0;
    for (int y = 0; y < small.height(); ++y)
        for (int x = 0; x < small.width(); ++x)
            ink += qGray(small.pixel(x, y)) < 200 ? 1 : 0;
    return double(ink) / double(small.width() * small.height());
}

// Exports the job through the command-line tool, as a user would, without opening the result.
QString exportWithCli(const QString &jobFile, const QString &option, const QString &folder) {
    QString problem;
    runClient(QStringLiteral(TAVREL_BIN_DIR "/tavrel-cli"),
              {QStringLiteral("render"), jobFile, option, folder, QStringLiteral("--no-open")},
              problem);
    return problem;
}

// The Classic body template with one caption changed, written into folder as name.
QString changedBodyTemplate(const QString &folder, const QString &name, const QByteArray &from,
                            const QByteArray &to) {
    QByteArray body = testsupport::readBytes(exporttest::templateFolder() +
                                             QStringLiteral("/Classic Customer.cst"));
    if (!body.contains(from))
        return {};
    body.replace(from, to);
    const QString path = QDir(folder).filePath(name);
    testsupport::writeBytes(path, body);
    return path;
}

// The page with a script added that writes, once everything has loaded, how many of its images
// the browser could show: "images: loaded/all". Kept beside the page, so links resolve alike.
QString withImageCheck(const QString &page) {
    QByteArray html = testsupport::readBytes(page);
    html.replace("</body>",
                 "<script>window.addEventListener('load', function () {"
                 "var all = document.images.length, ok = 0;"
                 "for (var i = 0; i < all; ++i) if (document.images[i].naturalWidth > 0) ++ok;"
                 "document.body.setAttribute('data-images', ok + '/' + all);});</script></body>");
    const QString checked = QFileInfo(page).dir().filePath(QStringLiteral("check-images.htm"));
    testsupport::writeBytes(checked, html);
    return checked;
}

// A TCP listener on 127.0.0.1 (a free port) that only counts: whatever connects to it is a fetch
// that should not have happened. Nothing is answered; the kernel's backlog holds connections.
class LoopbackListener {
public:
    LoopbackListener() {
        m_socket = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        if (m_socket < 0 ||
            ::bind(m_socket, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0 ||
            ::listen(m_socket, 16) != 0 ||
            ::getsockname(m_socket, reinterpret_cast<sockaddr *>(&address), &length) != 0)
            return;
        m_port = ntohs(address.sin_port);
    }
    ~LoopbackListener() {
        if (m_socket >= 0)
            ::close(m_socket);
    }
    LoopbackListener(const LoopbackListener &) = delete;
    LoopbackListener &operator=(const LoopbackListener &) = delete;

    int port() const { return m_port; }
    // Takes a connection waiting for at most waitMs and closes it unanswered, so that the
    // client does not wait on it; answers whether there was one.
    bool takeConnection(int waitMs) const {
        pollfd fd{m_socket, POLLIN, 0};
        if (::poll(&fd, 1, waitMs) <= 0)
            return false;
        const int connection = ::accept(m_socket, nullptr, nullptr);
        if (connection >= 0)
            ::close(connection);
        return true;
    }

private:
    int m_socket = -1;
    int m_port = 0;
};

} // namespace

// The exported files opened by the programs people use: HTML pages in Chromium, the RTF document
// in LibreOffice. Skipped where the program is not installed.
class ExportClientsTest : public QObject {
    Q_OBJECT

private slots:
    void chromiumShowsPagesAndFollowsLinks();
    void libreOfficeReadsRtf();
    void relativeFolderShowsEveryImage();
    void fontNameCannotFetch();
};

void ExportClientsTest::chromiumShowsPagesAndFollowsLinks() {
    const QString chromium = QStandardPaths::findExecutable(QStringLiteral("chromium"));
    if (chromium.isEmpty())
        QSKIP("chromium is not installed");
    QTemporaryDir dir;
    const QString jobFile = exporttest::writeJob(dir.path(), 40, {true, true, true});
    const QDir out(dir.filePath(QStringLiteral("html")));
    const QString failure = exportWithCli(jobFile, QStringLiteral("--html"), out.path());
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
    const QString first = out.filePath(QStringLiteral("Harbor Point Offices1.htm"));
    int pages = 0;
    while (out.exists(QStringLiteral("Harbor Point Offices%1.htm").arg(pages + 1)))
        ++pages;
    QVERIFY2(pages >= 3, qPrintable(QString::number(pages)));
    QVERIFY(!out.exists(QStringLiteral("Harbor Point Offices.htm")));

    // The browser's own reading of the pages: page 1's "next" arrow names page 2, which exists;
    // page 2 holds the first items, the hostile one as text, not as a script element.
    QString problem;
    const auto dumpDom = [&](int page) {
        QStringList dump =
            chromiumArguments(dir.filePath(QStringLiteral("profile-dom%1").arg(page)));
        dump << QStringLiteral("--dump-dom")
             << QUrl::fromLocalFile(
                    out.filePath(QStringLiteral("Harbor Point Offices%1.htm").arg(page)))
                    .toString();
        return QString::fromUtf8(runClient(chromium, dump, problem));
    };
    const QString dom = dumpDom(1);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    const QRegularExpression next(QStringLiteral("<a href=\"([^\"]*)\"[^>]*>\u00e8</a>"));
    const QRegularExpressionMatch link = next.match(dom);
    QVERIFY2(link.hasMatch(), qPrintable(dom.left(2000)));
    const QString target = QUrl::fromPercentEncoding(link.captured(1).toUtf8());
    QCOMPARE(target, QStringLiteral("Harbor Point Offices2.htm"));
    QVERIFY(out.exists(target));
    QVERIFY(dom.contains(QStringLiteral("Page 1 of %1").arg(pages)));
    const QString body = dumpDom(2);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    QVERIFY(body.contains(QStringLiteral("PART-1")));
    QVERIFY(body.contains(QStringLiteral("&lt;script&gt;alert(\"x\")&lt;/script&gt;")));
    QVERIFY(!body.contains(QStringLiteral("<script")));

    // Screenshots of the first and a middle page; TAVREL_EXPORT_SHOTS keeps them for a look.
    const QString keep = qEnvironmentVariable("TAVREL_EXPORT_SHOTS");
    for (const int page : {1, (pages + 1) / 2}) {
        const QString png = dir.filePath(QStringLiteral("page%1.png").arg(page));
        QStringList shot = chromiumArguments(dir.filePath(QStringLiteral("profile%1").arg(page)));
        shot << QStringLiteral("--screenshot=") + png << QStringLiteral("--window-size=1000,1300")
             << QUrl::fromLocalFile(
                    out.filePath(QStringLiteral("Harbor Point Offices%1.htm").arg(page)))
                    .toString();
        runClient(chromium, shot, problem);
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
        const QImage image(png);
        QCOMPARE(image.size(), QSize(1000, 1300));
        QVERIFY2(inkShare(image) > 0.01, "the page renders blank");
        if (!keep.isEmpty()) {
            QDir().mkpath(keep);
            QFile::remove(QDir(keep).filePath(QFileInfo(png).fileName()));
            QFile::copy(png, QDir(keep).filePath(QFileInfo(png).fileName()));
        }
    }
}

void ExportClientsTest::libreOfficeReadsRtf() {
    const QString soffice = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    if (soffice.isEmpty())
        QSKIP("soffice (libreoffice-writer-nogui) is not installed");
    QTemporaryDir dir;
    const QString jobFile = exporttest::writeJob(dir.path(), 12, {true, true, true});
    const QString failure =
        exportWithCli(jobFile, QStringLiteral("--rtf"), dir.filePath(QStringLiteral("rtf")));
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
    const QString rtf = dir.filePath(QStringLiteral("rtf/Classic CustomerCst.rtf"));
    QVERIFY(QFile::exists(rtf));
    const QString converted = dir.filePath(QStringLiteral("converted"));
    const QString profile =
        QUrl::fromLocalFile(dir.filePath(QStringLiteral("lo-profile"))).toString();
    QString problem;
    for (const QString &format :
         {QStringLiteral("txt:Text (encoded):UTF8"), QStringLiteral("pdf")}) {
        runClient(soffice,
                  {QStringLiteral("-env:UserInstallation=") + profile, QStringLiteral("--headless"),
                   QStringLiteral("--convert-to"), format, QStringLiteral("--outdir"), converted,
                   rtf},
                  problem);
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
    }
    const QString base = QDir(converted).filePath(QFileInfo(rtf).completeBaseName());
    QVERIFY(testsupport::readBytes(base + QStringLiteral(".pdf")).startsWith("%PDF"));
    const QString text = QString::fromUtf8(testsupport::readBytes(base + QStringLiteral(".txt")));
    for (int item = 1; item <= 12; ++item) {
        QVERIFY2(text.contains(QStringLiteral("PART-%1").arg(item)), qPrintable(text));
        QVERIFY2(text.contains(exporttest::itemDescription(item)), qPrintable(text));
    }
}

// An export into a folder named relative to the working folder: the browser finds every picture
// the pages name (the status icons of a "Complete" column).
void ExportClientsTest::relativeFolderShowsEveryImage() {
    const QString chromium = QStandardPaths::findExecutable(QStringLiteral("chromium"));
    if (chromium.isEmpty())
        QSKIP("chromium is not installed");
    QTemporaryDir dir;
    const QString jobFile = exporttest::writeJob(dir.path(), 5, {false, true, false});
    const QString icons =
        changedBodyTemplate(dir.path(), QStringLiteral("Icons.cst"), "Box_13_Caption=EXT List$\r\n",
                            "Box_13_Caption=Complete\r\n");
    QVERIFY(!icons.isEmpty());
    IniFile::write(jobFile, QStringLiteral("Printer"), {{QStringLiteral("Body Template"), icons}});
    QString problem;
    runClient(QStringLiteral(TAVREL_BIN_DIR "/tavrel-cli"),
              {QStringLiteral("render"), jobFile, QStringLiteral("--html"), QStringLiteral("html"),
               QStringLiteral("--no-open")},
              problem, dir.path());
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    const QString page = dir.filePath(QStringLiteral("html/IconsCst.htm"));
    QVERIFY(QFile::exists(page));
    QStringList dump = chromiumArguments(dir.filePath(QStringLiteral("profile")));
    dump << QStringLiteral("--virtual-time-budget=5000") << QStringLiteral("--dump-dom")
         << QUrl::fromLocalFile(withImageCheck(page)).toString();
    const QString dom = QString::fromUtf8(runClient(chromium, dump, problem));
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    const QRegularExpressionMatch images =
        QRegularExpression(QStringLiteral("data-images=\"(\\d+)/(\\d+)\"")).match(dom);
    QVERIFY2(images.hasMatch(), qPrintable(dom.left(2000)));
    QVERIFY(images.captured(2).toInt() >= 5); // one icon per item
    QCOMPARE(images.captured(1), images.captured(2));
}

// A template whose font name tries to add a declaration that fetches a URL: the browser showing
// the export asks the loopback listener for nothing.
void ExportClientsTest::fontNameCannotFetch() {
    const QString chromium = QStandardPaths::findExecutable(QStringLiteral("chromium"));
    if (chromium.isEmpty())
        QSKIP("chromium is not installed");
    const LoopbackListener listener;
    QVERIFY(listener.port() > 0);
    const QByteArray url = "http://127.0.0.1:" + QByteArray::number(listener.port()) + "/x.png";
    QTemporaryDir dir;
    const QString jobFile = exporttest::writeJob(dir.path(), 3, {false, true, false});
    const QString hostile =
        changedBodyTemplate(dir.path(), QStringLiteral("Hostile.cst"), "Box_9_FontName=Arial\r\n",
                            "Box_9_FontName=Arial; background-image: url(" + url + ")\r\n");
    QVERIFY(!hostile.isEmpty());
    IniFile::write(jobFile, QStringLiteral("Printer"),
                   {{QStringLiteral("Body Template"), hostile}});
    const QDir out(dir.filePath(QStringLiteral("html")));
    const QString failure = exportWithCli(jobFile, QStringLiteral("--html"), out.path());
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
    const QString page = out.filePath(QStringLiteral("HostileCst.htm"));
    const QByteArray html = testsupport::readBytes(page);
    QVERIFY(!html.contains("background-image"));
    QVERIFY(!html.contains(url));
    QVERIFY(html.contains("; font-family: Arial; font-weight: "));

    // The browser renders the page while the listener counts what reaches it; a fetch is
    // closed unanswered at once, so the browser goes on. Bounded by the client timeout.
    QStringList shot = chromiumArguments(dir.filePath(QStringLiteral("profile")));
    shot << QStringLiteral("--virtual-time-budget=3000")
         << QStringLiteral("--screenshot=") + dir.filePath(QStringLiteral("hostile.png"))
         << QStringLiteral("--window-size=1000,1300") << QUrl::fromLocalFile(page).toString();
    QProcess browser;
    browser.start(chromium, shot);
    QVERIFY(browser.waitForStarted());
    int fetches = 0;
    QElapsedTimer timer;
    timer.start();
    while (!browser.waitForFinished(50) && timer.elapsed() < ClientTimeout)
        fetches += listener.takeConnection(0) ? 1 : 0;
    if (browser.state() != QProcess::NotRunning) {
        browser.kill();
        browser.waitForFinished();
    }
    fetches += listener.takeConnection(200) ? 1 : 0;
    QCOMPARE(fetches, 0);
    QCOMPARE(browser.exitCode(), 0);
    QVERIFY(QFile::exists(dir.filePath(QStringLiteral("hostile.png"))));
}

TAVREL_TEST(ExportClientsTest)
#include "ExportClientsTest.moc"
