#include "designer/FieldList.h"

#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QVBoxLayout>

namespace tavrel {

namespace {

constexpr int TypeRole = Qt::UserRole;
constexpr int CaptionRole = Qt::UserRole + 1;

// Drags carry the request as "type<newline>caption".
class DraggableList : public QListWidget {
public:
    using QListWidget::QListWidget;

protected:
    QStringList mimeTypes() const override { return {FieldList::mimeType()}; }
    QMimeData *mimeData(const QList<QListWidgetItem *> &items) const override {
        if (items.isEmpty())
            return nullptr;
        NewBoxRequest request;
        request.type = NewBoxRequest::Type(items.first()->data(TypeRole).toInt());
        request.caption = items.first()->data(CaptionRole).toString();
        return FieldList::mimeFor(request);
    }
};

} // namespace

FieldList::FieldList(QWidget *parent)
    : QWidget(parent) {
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    auto *hint = new QLabel(
        QStringLiteral("Drag a field onto the page, or double-click it to add it."), this);
    hint->setWordWrap(true);
    layout->addWidget(hint);
    m_filter = new QLineEdit(this);
    m_filter->setObjectName(QStringLiteral("txtFieldFilter"));
    m_filter->setPlaceholderText(QStringLiteral("Find a field..."));
    m_filter->setClearButtonEnabled(true);
    layout->addWidget(m_filter);
    m_list = new DraggableList(this);
    m_list->setObjectName(QStringLiteral("lstFields"));
    m_list->setDragEnabled(true);
    m_list->setDragDropMode(QAbstractItemView::DragOnly);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    layout->addWidget(m_list, 1);
    connect(m_filter, &QLineEdit::textChanged, this, &FieldList::applyFilter);
    connect(m_list, &QListWidget::itemActivated, this, [this](QListWidgetItem *item) {
        NewBoxRequest request;
        request.type = NewBoxRequest::Type(item->data(TypeRole).toInt());
        request.caption = item->data(CaptionRole).toString();
        emit placeRequested(request);
    });
}

void FieldList::setKind(TemplateKind kind) {
    m_list->clear();
    const auto add = [this](const QString &text, NewBoxRequest::Type type, const QString &caption) {
        auto *item = new QListWidgetItem(text, m_list);
        item->setData(TypeRole, int(type));
        item->setData(CaptionRole, caption);
        if (type != NewBoxRequest::Type::Field) {
            QFont font = item->font();
            font.setItalic(true);
            item->setFont(font);
        }
    };
    add(QStringLiteral("Note / Label"), NewBoxRequest::Type::Note, QStringLiteral("Label"));
    add(QStringLiteral("Logo"), NewBoxRequest::Type::Logo, QStringLiteral("Logo"));
    for (const QString &caption : LayoutEdits::fieldCaptions(kind)) {
        add(caption,
            caption == QLatin1String("Image") ? NewBoxRequest::Type::Image
                                              : NewBoxRequest::Type::Field,
            caption);
    }
    applyFilter(m_filter->text());
}

std::optional<NewBoxRequest> FieldList::requestFor(const QString &caption) const {
    for (int row = 0; row < m_list->count(); ++row) {
        const QListWidgetItem *item = m_list->item(row);
        if (item->text() == caption) {
            NewBoxRequest request;
            request.type = NewBoxRequest::Type(item->data(TypeRole).toInt());
            request.caption = item->data(CaptionRole).toString();
            return request;
        }
    }
    return std::nullopt;
}

void FieldList::applyFilter(const QString &text) {
    for (int row = 0; row < m_list->count(); ++row) {
        QListWidgetItem *item = m_list->item(row);
        item->setHidden(!text.isEmpty() && !item->text().contains(text, Qt::CaseInsensitive));
    }
}

QString FieldList::mimeType() {
    return QStringLiteral("application/x-tavrel-field");
}

QMimeData *FieldList::mimeFor(const NewBoxRequest &request) {
    auto *mime = new QMimeData;
    mime->setData(
        mimeType(),
        (QString::number(int(request.type)) + QLatin1Char('\n') + request.caption).toUtf8());
    return mime;
}

std::optional<NewBoxRequest> FieldList::requestFromMime(const QMimeData *mime) {
    if (!mime || !mime->hasFormat(mimeType()))
        return std::nullopt;
    const QString text = QString::fromUtf8(mime->data(mimeType()));
    const qsizetype newline = text.indexOf(QLatin1Char('\n'));
    if (newline < 0)
        return std::nullopt;
    NewBoxRequest request;
    request.type = NewBoxRequest::Type(std::clamp(text.left(newline).toInt(), 0, 3));
    request.caption = text.mid(newline + 1);
    return request;
}

} // namespace tavrel
