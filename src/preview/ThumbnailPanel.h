#pragma once

#include <QListView>

#include <memory>

namespace tavrel {

class PageEngine;
class ThumbnailModel;

// The side panel of small page pictures. Only the thumbnails scrolled into view are rendered
// (through the page replay), and they are kept in a small cache; refreshPages() picks up pages
// added to a document that is still being laid out.
class ThumbnailPanel : public QListView {
    Q_OBJECT

public:
    static constexpr int ThumbnailWidth = 110;
    static constexpr int ThumbnailHeight = 143;

    explicit ThumbnailPanel(const PageEngine &engine, QWidget *parent = nullptr);
    ~ThumbnailPanel() override;

    // Named apart from QAbstractItemView::reset(), which the view calls itself.
    void refreshPages();
    void resetPages();
    void setCurrentPage(int page);
    int renderedCount() const;

signals:
    void pageChosen(int page);

private:
    std::unique_ptr<ThumbnailModel> m_model;
};

} // namespace tavrel
