#include "base/ScriptedPrompter.h"

namespace tavrel {

namespace {
template <typename T> T takeFront(std::deque<T> &queue, T fallback) {
    if (queue.empty())
        return fallback;
    T value = std::move(queue.front());
    queue.pop_front();
    return value;
}
ScriptedPrompter::Call makeCall(const char *kind, const QString &text, const QString &title = {}) {
    ScriptedPrompter::Call call;
    call.kind = QString::fromLatin1(kind);
    call.text = text;
    call.title = title;
    return call;
}

} // namespace

QList<ScriptedPrompter::Call> ScriptedPrompter::calls(const QString &kind) const {
    QList<Call> result;
    for (const Call &call : m_calls) {
        if (call.kind == kind)
            result << call;
    }
    return result;
}

QStringList ScriptedPrompter::messages() const {
    QStringList texts;
    for (const Call &call : calls(QStringLiteral("message")))
        texts << call.text;
    return texts;
}

MessageAnswer ScriptedPrompter::message(const QString &text, const QString &title, MessageIcon icon,
                                        MessageButtons buttons, MessageAnswer defaultAnswer) {
    Call call = makeCall("message", text, title);
    call.icon = icon;
    call.buttons = buttons;
    call.defaultAnswer = defaultAnswer;
    m_calls << call;
    const MessageAnswer fallback =
        buttons == MessageButtons::Ok || buttons == MessageButtons::OkCancel ? MessageAnswer::Ok
                                                                             : defaultAnswer;
    return takeFront(m_answers, fallback);
}

std::optional<QString> ScriptedPrompter::input(const QString &prompt, const QString &title,
                                               const QString &defaultText) {
    Call call = makeCall("input", prompt, title);
    call.file.fileName = defaultText;
    m_calls << call;
    return takeFront(m_inputs, std::optional<QString>());
}

std::optional<QString> ScriptedPrompter::multiLineInput(const QString &prompt, const QString &title,
                                                        const QString &defaultText) {
    Call call = makeCall("multiLineInput", prompt, title);
    call.file.fileName = defaultText;
    m_calls << call;
    return takeFront(m_inputs, std::optional<QString>());
}

std::optional<QString> ScriptedPrompter::openFile(const FileDialogRequest &request) {
    Call call = makeCall("openFile", request.title, request.title);
    call.file = request;
    m_calls << call;
    return takeFront(m_files, std::optional<QString>());
}

std::optional<QString> ScriptedPrompter::saveFile(const FileDialogRequest &request) {
    Call call = makeCall("saveFile", request.title, request.title);
    call.file = request;
    m_calls << call;
    return takeFront(m_files, std::optional<QString>());
}

std::optional<quint32> ScriptedPrompter::color(quint32 initial) {
    Call call = makeCall("color", QString::number(initial));
    call.color = initial;
    m_calls << call;
    return takeFront(m_colors, std::optional<quint32>());
}

std::optional<FontChoice> ScriptedPrompter::font(const FontChoice &initial) {
    Call call = makeCall("font", initial.name);
    call.font = initial;
    m_calls << call;
    return takeFront(m_fonts, std::optional<FontChoice>());
}

std::optional<QString> ScriptedPrompter::folder(const QString &title, const QString &start) {
    Call call = makeCall("folder", title, title);
    call.file.folder = start;
    m_calls << call;
    return takeFront(m_files, std::optional<QString>());
}

void ScriptedPrompter::status(const QString &text) {
    m_calls << makeCall("status", text);
}

bool ScriptedPrompter::openDocument(const QString &path, const QString &description) {
    m_calls << makeCall("openDocument", path, description);
    return m_openResult;
}

std::optional<PrinterSetup> ScriptedPrompter::printerSetup(const PrinterSetup &initial) {
    m_calls << makeCall("printerSetup", initial.printer);
    m_printerSetupsShown << initial;
    return takeFront(m_printerSetups, std::optional<PrinterSetup>());
}

} // namespace tavrel
