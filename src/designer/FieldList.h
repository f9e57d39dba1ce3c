#pragma once

#include "designer/LayoutEdits.h"

#include <QListWidget>
#include <QWidget>

#include <optional>

class QLineEdit;
class QMimeData;

namespace tavrel {

// The list of what can be put on the page: a note or label, the logo, and the catalogue
// captions of the template's kind. Captions are dragged onto the page or double-clicked.
class FieldList : public QWidget {
    Q_OBJECT

public:
    explicit FieldList(QWidget *parent = nullptr);

    void setKind(TemplateKind kind);
    QListWidget *list() const { return m_list; }
    QLineEdit *filter() const { return m_filter; }
    // The request of the entry whose text is caption (for tests and keyboard use).
    std::optional<NewBoxRequest> requestFor(const QString &caption) const;

    static QString mimeType();
    static QMimeData *mimeFor(const NewBoxRequest &request);
    static std::optional<NewBoxRequest> requestFromMime(const QMimeData *mime);

signals:
    void placeRequested(const NewBoxRequest &request);

private:
    void applyFilter(const QString &text);

    QLineEdit *m_filter = nullptr;
    QListWidget *m_list = nullptr;
};

} // namespace tavrel
