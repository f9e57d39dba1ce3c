#include "base/ConsolePrompter.h"

#include <cstdio>

namespace tavrel {

MessageAnswer ConsolePrompter::message(const QString &text, const QString &title, MessageIcon icon,
                                       MessageButtons buttons, MessageAnswer defaultAnswer) {
    RecordingPrompter::message(text, title, icon, buttons, defaultAnswer);
    QString shown = text;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    const QByteArray bytes =
        ((title.isEmpty() ? QString() : title + QStringLiteral(": ")) + shown + QLatin1Char('\n'))
            .toUtf8();
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stderr);
    return buttons == MessageButtons::Ok ? MessageAnswer::Ok : defaultAnswer;
}

void ConsolePrompter::status(const QString &text) {
    if (text.isEmpty())
        return;
    const QByteArray bytes = (text + QLatin1Char('\n')).toUtf8();
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stderr);
}

bool ConsolePrompter::openDocument(const QString &path, const QString &description) {
    Q_UNUSED(description);
    status(QStringLiteral("Written: ") + path);
    return true;
}

} // namespace tavrel
