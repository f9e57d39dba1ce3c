#pragma once

#include <QDialog>

#include <functional>

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace tavrel {

// The find dialog of the preview: a text box, Find and Close. It stays open beside the
// preview (non-modal) so that Find can be pressed again for the next match; the search itself
// belongs to the window, which gets the text through the callback.
class frmFind : public QDialog {
    Q_OBJECT

public:
    using FindCallback = std::function<void(const QString &text, bool matchCase)>;

    explicit frmFind(FindCallback find, QWidget *parent = nullptr);

    QLineEdit *txtFind() const { return m_text; }
    QPushButton *cmdFind() const { return m_find; }
    QPushButton *cmdExit() const { return m_exit; }
    QCheckBox *chkMatchCase() const { return m_matchCase; }

    // Puts the cursor in the text box with its text selected, ready to type over.
    void activate();

private:
    void find();

    FindCallback m_callback;
    QLineEdit *m_text = nullptr;
    QCheckBox *m_matchCase = nullptr;
    QPushButton *m_find = nullptr;
    QPushButton *m_exit = nullptr;
};

} // namespace tavrel
