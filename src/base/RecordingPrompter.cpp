#include "base/RecordingPrompter.h"

namespace tavrel {

MessageAnswer RecordingPrompter::message(const QString &text, const QString &, MessageIcon,
                                         MessageButtons, MessageAnswer defaultAnswer) {
    m_messages.append(text);
    return defaultAnswer;
}

} // namespace tavrel
