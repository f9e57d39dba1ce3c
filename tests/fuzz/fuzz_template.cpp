// Page templates: the reader the designer and the renderers use, then the writer on what was read.

#include "FuzzInput.h"

#include "base/RuntimeError.h"
#include "base/ScriptedPrompter.h"
#include "templates/TemplateLayout.h"
#include "templates/TemplateReader.h"
#include "templates/TemplateWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using namespace tavrel;
    ScriptedPrompter prompter;
    TemplateLayout layout;
    try {
        TemplateReader::readBytes(fuzz::inputBytes(data, size), layout, prompter);
        TemplateWriter::bytes(layout, QStringLiteral("Custom Template"));
    } catch (const RuntimeError &) {
    }
    return 0;
}
