#include "shell/ui/MainWindowPlaceholder.h"

#include "shell/AppContext.h"
#include "shell/ui/ShutDown.h"

#include <QCloseEvent>
#include <QLabel>
#include <QMainWindow>

namespace tavrel {

namespace {

// Stands in for the template selection window until that lands: shows what was loaded.
class PlaceholderWindow : public QMainWindow {
public:
    explicit PlaceholderWindow(AppContext &context)
        : m_context(context) {
        setWindowTitle(QStringLiteral("Tavrel"));
        setAttribute(Qt::WA_DeleteOnClose);
        auto *label = new QLabel(this);
        label->setMargin(24);
        label->setText(
            QStringLiteral("<h3>Tavrel</h3><p>Job file: %1</p><p>Specification: %2</p>")
                .arg(context.paths.jobFile.toHtmlEscaped(), context.paths.sifPath.toHtmlEscaped()));
        setCentralWidget(label);
        resize(560, 220);
    }

protected:
    void closeEvent(QCloseEvent *event) override {
        event->accept();
        ShutDown(m_context);
    }

private:
    AppContext &m_context;
};

} // namespace

void showMainWindow(AppContext &context, Prompter &prompter) {
    Q_UNUSED(prompter);
    auto *window = new PlaceholderWindow(context);
    window->show();
}

} // namespace tavrel
