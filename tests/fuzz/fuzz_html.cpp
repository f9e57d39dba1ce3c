// Page templates through the HTML writer: every box of a template read from the input becomes
// the paragraph, picture and rule fragments an HTML export writes for it, and every style
// attribute in them must hold exactly the declarations of its fragment form, each value kept
// inside its own declaration. A template is a file users exchange; nothing in it may add a
// declaration, an attribute or a tag.

#include "FuzzInput.h"

#include "base/RuntimeError.h"
#include "base/ScriptedPrompter.h"
#include "render/HtmlFragments.h"
#include "templates/TemplateLayout.h"
#include "templates/TemplateReader.h"

#include <QStringList>

#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

namespace {

using Attributes = std::vector<std::pair<QString, QString>>;

struct Tag {
    QString name;
    Attributes attributes;
};

[[noreturn]] void fail(const char *what, const QString &fragment) {
    std::fprintf(stderr, "HTML fragment check failed: %s\n%s\n", what,
                 fragment.toUtf8().constData());
    std::abort();
}

// The tags of a fragment as a browser's tokenizer reads them: a name, then attributes with
// optional "=" and quoted or bare values, up to ">".
std::vector<Tag> tagsOf(const QString &html) {
    std::vector<Tag> tags;
    const qsizetype size = html.size();
    qsizetype i = 0;
    const auto blank = [&](qsizetype at) {
        return at < size && (html[at] == u' ' || html[at] == u'\t' || html[at] == u'\r' ||
                             html[at] == u'\n' || html[at] == u'\f');
    };
    while ((i = html.indexOf(u'<', i)) >= 0) {
        ++i;
        Tag tag;
        if (i < size && html[i] == u'/') // an end tag
            tag.name += html[i++];
        while (i < size && !blank(i) && html[i] != u'>' && html[i] != u'/')
            tag.name += html[i++];
        while (i < size && html[i] != u'>') {
            while (blank(i) || (i < size && html[i] == u'/'))
                ++i;
            if (i >= size || html[i] == u'>')
                break;
            QString name;
            while (i < size && !blank(i) && html[i] != u'>' && html[i] != u'=' && html[i] != u'/')
                name += html[i++];
            while (blank(i))
                ++i;
            QString value;
            if (i < size && html[i] == u'=') {
                ++i;
                while (blank(i))
                    ++i;
                if (i < size && (html[i] == u'"' || html[i] == u'\'')) {
                    const QChar quote = html[i++];
                    while (i < size && html[i] != quote)
                        value += html[i++];
                    ++i;
                } else {
                    while (i < size && !blank(i) && html[i] != u'>')
                        value += html[i++];
                }
            }
            tag.attributes.emplace_back(name.toLower(), value);
        }
        tags.push_back(std::move(tag));
    }
    return tags;
}

// Checks one style attribute: its declarations are exactly names, in order, and no value holds
// anything that could end its declaration or start another (or a rule, a comment, an escape, a
// function such as url()).
void checkStyle(const QString &style, const QStringList &names, const QString &fragment) {
    QStringList declarations = style.split(u';');
    if (!declarations.isEmpty() && declarations.last().trimmed().isEmpty())
        declarations.removeLast();
    if (declarations.size() != names.size())
        fail("wrong number of declarations", fragment);
    for (qsizetype d = 0; d < declarations.size(); ++d) {
        const QString &declaration = declarations.at(d);
        const qsizetype colon = declaration.indexOf(u':');
        if (colon < 0)
            fail("declaration without a colon", fragment);
        if (declaration.left(colon).trimmed().compare(names.at(d), Qt::CaseInsensitive) != 0)
            fail("unexpected declaration name", fragment);
        const QString value = declaration.mid(colon + 1);
        for (const QChar c : value) {
            if (c == u':' || c == u'{' || c == u'}' || c == u'"' || c == u'\'' || c == u'\\' ||
                c == u'(' || c == u')' || c == u'<' || c == u'>' || c == u'/' || c == u'\r' ||
                c == u'\n' || c == u'@' || c == u'!' || c == u'&')
                fail("a value reaches out of its declaration", fragment);
        }
    }
}

void checkTag(const Tag &tag, const QString &expectedName, const QStringList &attributeNames,
              const QStringList &declarations, const QString &fragment) {
    if (tag.name != expectedName)
        fail("unexpected tag", fragment);
    if (tag.attributes.size() != std::size_t(attributeNames.size()))
        fail("unexpected attributes", fragment);
    for (std::size_t a = 0; a < tag.attributes.size(); ++a) {
        if (tag.attributes[a].first != attributeNames.at(qsizetype(a)))
            fail("unexpected attribute", fragment);
    }
    checkStyle(tag.attributes.front().second, declarations, fragment);
}

const QStringList ParagraphDeclarations = {QStringLiteral("position"),
                                           QStringLiteral("text-align"),
                                           QStringLiteral("left"),
                                           QStringLiteral("top"),
                                           QStringLiteral("width"),
                                           QStringLiteral("font-size"),
                                           QStringLiteral("font-family"),
                                           QStringLiteral("font-weight"),
                                           QStringLiteral("font-style"),
                                           QStringLiteral("text-decoration"),
                                           QStringLiteral("background-color")};
const QStringList ColorDeclaration = {QStringLiteral("color")};
const QStringList PlaceDeclarations = {QStringLiteral("position"), QStringLiteral("left"),
                                       QStringLiteral("top")};

void checkParagraph(const QString &fragment) {
    const std::vector<Tag> tags = tagsOf(fragment);
    // <P STYLE> <font style> </font> </P>: the text between can hold no tag of its own.
    if (tags.size() != 4 || tags[2].name != QLatin1String("/font") ||
        tags[3].name != QLatin1String("/P"))
        fail("the paragraph's tags", fragment);
    checkTag(tags[0], QStringLiteral("P"), {QStringLiteral("style")}, ParagraphDeclarations,
             fragment);
    checkTag(tags[1], QStringLiteral("font"), {QStringLiteral("style")}, ColorDeclaration,
             fragment);
}

void checkPicture(const QString &fragment, const QStringList &attributes) {
    const std::vector<Tag> tags = tagsOf(fragment);
    if (tags.size() != 1)
        fail("the picture's tags", fragment);
    checkTag(tags[0], QStringLiteral("IMG"), attributes, PlaceDeclarations, fragment);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    using namespace tavrel;
    ScriptedPrompter prompter;
    TemplateLayout layout;
    try {
        TemplateReader::readBytes(fuzz::inputBytes(data, size), layout, prompter);
    } catch (const RuntimeError &) {
        return 0;
    }
    for (int slot = 1; slot <= TemplateLayout::BoxCapacity; ++slot) {
        const BoxInfo &box = layout.box(slot);
        if (!box.placed)
            continue;
        HtmlTextFormat format;
        format.fontSize = box.fontSize;
        format.fontName = box.fontName;
        format.weight = box.fontBold;
        format.italic = box.fontItalic;
        format.underline = box.fontUnderLine;
        format.textColor = quint32(box.foreColor);
        format.brushColor = quint32(box.backColor);
        format.textAlign = box.textAlign;
        checkParagraph(HtmlFragments::textParagraph(format, box.left, box.top, box.width,
                                                    HtmlMarkup::fromData(box.caption)));
        checkParagraph(HtmlFragments::textParagraph(format, box.left, box.top, box.width,
                                                    htmlAlignedText(box.notesName)));
        const QStringList item = {QStringLiteral("style"), QStringLiteral("src"),
                                  QStringLiteral("width"), QStringLiteral("height")};
        const QStringList band = {QStringLiteral("style"), QStringLiteral("src"),
                                  QStringLiteral("height"), QStringLiteral("width")};
        checkPicture(HtmlFragments::picture(box.imgFileName, box.left, box.top), item);
        checkPicture(HtmlFragments::picture(box.logoFile, box.left, box.top, HtmlPictureForm::Band),
                     band);
    }
    for (int slot = 1; slot <= TemplateLayout::LineCapacity; ++slot) {
        const LineInfo &line = layout.line(slot);
        if (!line.placed)
            continue;
        const QString rule = HtmlFragments::horizontalRule(line.left, line.top);
        const std::vector<Tag> tags = tagsOf(rule);
        if (tags.size() != 1)
            fail("the rule's tags", rule);
        checkTag(tags[0], QStringLiteral("HR"), {QStringLiteral("style")}, PlaceDeclarations, rule);
    }
    return 0;
}
