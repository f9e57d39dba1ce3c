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
    Call call{QStringLiteral("message"), text, title, icon, buttons, defaultAnswer, {}};
    m_calls << call;
    const MessageAnswer fallback =
        buttons == MessageButtons::Ok || buttons == MessageButtons::OkCancel ? MessageAnswer::Ok
                                                                             : defaultAnswer;
    return takeFront(m_answers, fallback);
}

std::optional<QString> ScriptedPrompter::input(const QString &prompt, const QString &title,
                                               const QString &defaultText) {
    Call call{QStringLiteral("input"), prompt, title, {}, {}, {}, {}};
    call.file.fileName = defaultText;
    m_calls << call;
    return takeFront(m_inputs, std::optional<QString>());
}

std::optional<QString> ScriptedPrompter::openFile(const FileDialogRequest &request) {
    m_calls << Call{QStringLiteral("openFile"), request.title, request.title, {}, {}, {}, request};
    return takeFront(m_files, std::optional<QString>());
}

std::optional<QString> ScriptedPrompter::saveFile(const FileDialogRequest &request) {
    m_calls << Call{QStringLiteral("saveFile"), request.title, request.title, {}, {}, {}, request};
    return takeFront(m_files, std::optional<QString>());
}

std::optional<quint32> ScriptedPrompter::color(quint32 initial) {
    m_calls << Call{QStringLiteral("color"), QString::number(initial), {}, {}, {}, {}, {}};
    return takeFront(m_colors, std::optional<quint32>());
}

std::optional<FontChoice> ScriptedPrompter::font(const FontChoice &initial) {
    m_calls << Call{QStringLiteral("font"), initial.name, {}, {}, {}, {}, {}};
    return takeFront(m_fonts, std::optional<FontChoice>());
}

std::optional<QString> ScriptedPrompter::folder(const QString &title, const QString &start) {
    Call call{QStringLiteral("folder"), title, title, {}, {}, {}, {}};
    call.file.folder = start;
    m_calls << call;
    return takeFront(m_files, std::optional<QString>());
}

void ScriptedPrompter::status(const QString &text) {
    m_calls << Call{QStringLiteral("status"), text, {}, {}, {}, {}, {}};
}

bool ScriptedPrompter::openDocument(const QString &path, const QString &description) {
    m_calls << Call{QStringLiteral("openDocument"), path, description, {}, {}, {}, {}};
    return m_openResult;
}

} // namespace tavrel
