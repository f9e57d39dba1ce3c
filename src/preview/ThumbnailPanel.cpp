#include "preview/ThumbnailPanel.h"

#include "render/ImageOutput.h"
#include "render/PageEngine.h"

#include <QAbstractListModel>
#include <QCache>
#include <QPainter>

namespace tavrel {

class ThumbnailModel : public QAbstractListModel {
public:
    explicit ThumbnailModel(const PageEngine &engine)
        : m_engine(engine)
        , m_images(32 * 1024) {}

    int rowCount(const QModelIndex &parent) const override {
        return parent.isValid() ? 0 : m_count;
    }

    QVariant data(const QModelIndex &index, int role) const override {
        // The engine can lose pages (a new run) before the model hears of it.
        if (!index.isValid() || index.row() >= m_count ||
            index.row() >= int(m_engine.pages().size()))
            return {};
        const int page = index.row() + 1;
        switch (role) {
        case Qt::DisplayRole:
            return QString::number(page);
        case Qt::ToolTipRole:
            return QStringLiteral("Page %1").arg(page);
        case Qt::DecorationRole:
            return thumbnail(page);
        case Qt::SizeHintRole:
            return QSize(ThumbnailPanel::ThumbnailWidth + 16, ThumbnailPanel::ThumbnailHeight + 30);
        default:
            return {};
        }
    }

    void refresh() {
        const int count = int(m_engine.pages().size());
        if (count < m_count) {
            reset();
            return;
        }
        // Pages that gained items since their thumbnail was made (the page being laid out, the
        // page-field pass) are drawn again when next shown.
        for (auto it = m_itemCounts.begin(); it != m_itemCounts.end();) {
            const int page = it.key();
            if (page <= count && m_engine.page(page).items.size() != it.value()) {
                m_images.remove(page);
                it = m_itemCounts.erase(it);
                emit dataChanged(index(page - 1), index(page - 1), {Qt::DecorationRole});
            } else {
                ++it;
            }
        }
        if (count > m_count) {
            beginInsertRows(QModelIndex(), m_count, count - 1);
            m_count = count;
            endInsertRows();
        }
    }

    void reset() {
        beginResetModel();
        m_images.clear();
        m_itemCounts.clear();
        m_count = int(m_engine.pages().size());
        endResetModel();
    }

    int renderedCount() const { return m_rendered; }

private:
    QImage thumbnail(int page) const {
        if (const QImage *cached = m_images.object(page))
            return *cached;
        const Page &recorded = m_engine.page(page);
        // Fit the page into the thumbnail box, whichever way it is turned.
        const double dpi = std::min(ThumbnailPanel::ThumbnailWidth * 1440.0 / recorded.width,
                                    ThumbnailPanel::ThumbnailHeight * 1440.0 / recorded.height);
        QImage image = renderPageImage(m_engine, page, dpi);
        // A thin frame so white pages stand out from the panel.
        QPainter painter(&image);
        painter.setPen(QColor(120, 120, 120));
        painter.drawRect(image.rect().adjusted(0, 0, -1, -1));
        painter.end();
        ++m_rendered;
        m_itemCounts.insert(page, recorded.items.size());
        m_images.insert(page, new QImage(image),
                        std::max<qsizetype>(1, image.sizeInBytes() / 1024));
        return image;
    }

    const PageEngine &m_engine;
    int m_count = 0;
    // Rendering on demand from data() is the point of the model, hence mutable.
    mutable QCache<int, QImage> m_images; // cost in KiB
    mutable QHash<int, std::size_t> m_itemCounts;
    mutable int m_rendered = 0;
};

ThumbnailPanel::ThumbnailPanel(const PageEngine &engine, QWidget *parent)
    : QListView(parent)
    , m_model(std::make_unique<ThumbnailModel>(engine)) {
    setObjectName(QStringLiteral("lstThumbnails"));
    setModel(m_model.get());
    setViewMode(QListView::IconMode);
    setFlow(QListView::TopToBottom);
    setWrapping(false);
    setMovement(QListView::Static);
    setResizeMode(QListView::Adjust);
    setUniformItemSizes(true);
    setIconSize(QSize(ThumbnailWidth, ThumbnailHeight));
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setMinimumWidth(ThumbnailWidth + 40);
    setMaximumWidth(ThumbnailWidth + 60);
    setSpacing(2);
    m_model->reset();
    connect(this, &QListView::clicked, this,
            [this](const QModelIndex &index) { emit pageChosen(index.row() + 1); });
    connect(this, &QListView::activated, this,
            [this](const QModelIndex &index) { emit pageChosen(index.row() + 1); });
}

ThumbnailPanel::~ThumbnailPanel() {
    // The view must let go of the model before the model goes.
    setModel(nullptr);
}

void ThumbnailPanel::refreshPages() {
    m_model->refresh();
}

void ThumbnailPanel::resetPages() {
    m_model->reset();
}

void ThumbnailPanel::setCurrentPage(int page) {
    if (page < 1 || page > m_model->rowCount(QModelIndex()))
        return;
    const QModelIndex index = m_model->index(page - 1);
    if (currentIndex() != index) {
        setCurrentIndex(index);
        scrollTo(index);
    }
}

int ThumbnailPanel::renderedCount() const {
    return m_model->renderedCount();
}

} // namespace tavrel
