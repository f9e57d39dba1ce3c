#include "shell/ui/frmMenu.h"

#include "base/ErrorReport.h"
#include "base/Prompter.h"
#include "base/RuntimeError.h"
#include "base/ui/OutputNotice.h"
#include "base/ui/UserGuide.h"
#include "shell/AppContext.h"
#include "shell/JobPaths.h"
#include "shell/ReportExport.h"
#include "shell/ui/PreviewSession.h"
#include "shell/ui/ReportActions.h"
#include "shell/ui/ShutDown.h"
#include "templates/GroupFile.h"
#include "templates/PrintSelection.h"
#include "templates/TemplateKind.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QSettings>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <memory>

namespace tavrel {

namespace {

constexpr std::array<TemplateKind, 3> rowKinds = {TemplateKind::Cover, TemplateKind::Custom,
                                                  TemplateKind::Summary};

FileDialogRequest openTemplateDialog(int row, const QString &folder) {
    static const std::array<const char *, 3> titles = {"   Load Cover PageLayout Template...",
                                                       "   Load Custom PageLayout Template...",
                                                       "   Load Summary PageLayout Template..."};
    const QString ext = templateExtension(rowKinds[std::size_t(row)]).mid(1);
    FileDialogRequest request;
    request.title = QString::fromLatin1(titles[std::size_t(row)]);
    request.filter =
        QStringLiteral("Tavrel Page Layout File (*.%1)|*.%1|All Files  (*.*)|*.*").arg(ext);
    request.folder = folder;
    return request;
}

// A small picture of a page with header, columns and footer: the designer's door.
QIcon pageLayoutIcon() {
    QPixmap pixmap(48, 60);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(80, 80, 80), 1.5));
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(4, 2, 40, 56));
    painter.fillRect(QRectF(8, 6, 32, 7), QColor(70, 110, 170));
    for (int y = 18; y < 48; y += 5)
        painter.fillRect(QRectF(8, y, 32, 2), QColor(170, 170, 170));
    painter.fillRect(QRectF(8, 51, 32, 3), QColor(70, 110, 170));
    return QIcon(pixmap);
}

} // namespace

frmMenu::frmMenu(AppContext &context, Prompter &prompter, ReportActions &actions, QWidget *parent)
    : QMainWindow(parent)
    , m_context(context)
    , m_prompter(prompter)
    , m_actions(actions)
    , m_templateDirectory(context.paths.templateFolder) {
    setObjectName(QStringLiteral("frmMenu"));
    buildUi();
    fillTemplateLists();
    // A template saved in the designer shows in the lists at once, the choice kept.
    m_actions.setTemplateSavedHandler([this](const QString &) { refreshTemplateLists(); });

    const ReportSelection stored = m_context.job.reportSelection(m_templateDirectory);
    for (std::size_t row = 0; row < ReportSelection::Rows; ++row) {
        selectTemplate(int(row), resolved(stored.templates[row]));
        m_printable[row]->setChecked(stored.isPrintable(row));
    }

    const QSettings settings;
    restoreGeometry(settings.value(QStringLiteral("frmMenu/geometry")).toByteArray());
}

frmMenu::~frmMenu() = default;

void frmMenu::buildCommands() {
    const auto add = [this](const QString &name, const QString &text, const QString &tip,
                            std::function<void()> run, QList<QKeySequence> shortcuts = {}) {
        m_commands.add(CommandTable::command(name, text, std::move(run), std::move(shortcuts))
                           .withToolTip(tip));
    };
    add(QStringLiteral("cmdPrintPreview"), QStringLiteral("Print Pre&view"),
        QStringLiteral("Lay out the report and show it (Ctrl+Shift+P)"), [this] { printPreview(); },
        {QKeySequence(QStringLiteral("Ctrl+Shift+P"))});
    // Run mode "3" views the report only, here as in the preview: the outputs are greyed.
    const auto output = [this](const QString &tip) {
        return viewOnly() ? QStringLiteral("Not available: this report is for viewing only") : tip;
    };
    m_commands.add(
        CommandTable::command(QStringLiteral("cmdPrint"), QStringLiteral("&Print"),
                              [this] { printReport(); }, {QKeySequence(QStringLiteral("Ctrl+P"))})
            .withToolTip(output(QStringLiteral(
                "Print the report on the printer chosen in Printer Properties (Ctrl+P)")))
            .enabledWhen([this] { return !viewOnly(); }));
    m_commands.add(CommandTable::command(QStringLiteral("cmdPDF"), QStringLiteral("P&DF..."),
                                         [this] { exportPdf(); })
                       .withToolTip(output(QStringLiteral("Save the report as a PDF file")))
                       .enabledWhen([this] { return !viewOnly(); }));
    m_commands.add(
        CommandTable::command(QStringLiteral("cmdSpreadsheet"), QStringLiteral("Spread&sheet..."),
                              [this] { exportSpreadsheet(); })
            .withToolTip(
                output(QStringLiteral("Save the item list as a spreadsheet (.xlsx or .csv)")))
            .enabledWhen([this] { return !viewOnly(); }));
    add(QStringLiteral("cmdLoadGroup"), QStringLiteral("&Load Group..."),
        QStringLiteral("Load the three templates of a group file"), [this] { loadGroup(); });
    add(QStringLiteral("cmdSaveGroup"), QStringLiteral("Save &Group..."),
        QStringLiteral("Save the three templates as a group file"), [this] { saveGroup(); });
    add(QStringLiteral("cmdSaveAsDefault"), QStringLiteral("Save as De&fault"),
        QStringLiteral("Keep this choice for the next report"), [this] { saveAsDefault(); });
    add(QStringLiteral("cmdProperties"), QStringLiteral("Printer P&roperties..."),
        QStringLiteral("Choose the printer, the number of copies and the orientation"),
        [this] { m_actions.printerProperties(); });
    add(QStringLiteral("cmdCancel"), QStringLiteral("Close"), QStringLiteral("Close Tavrel"),
        [this] { close(); });
    m_commands.add(UserGuide::command([this] { openHelp(m_prompter); }));
    // One per template row: cover, body, summary.
    static const std::array<const char *, 3> designNames = {"Cover page...", "Custom page...",
                                                            "Summary page..."};
    for (int row = 0; row < 3; ++row) {
        add(QStringLiteral("cmdOpen(%1)").arg(row), QStringLiteral("..."),
            QStringLiteral("Click to load a template file"), [this, row] { openTemplate(row); });
        add(QStringLiteral("imgPagelayout(%1)").arg(row),
            QString::fromLatin1(designNames[std::size_t(row)]), QString(),
            [this, row] { openDesigner(row); });
    }
    m_commands.refresh();
}

void frmMenu::buildUi() {
    buildCommands();
    QString title = QStringLiteral("Tavrel");
    if (!m_context.paths.activeDocumentName.isEmpty())
        title += QStringLiteral(" - ") + m_context.paths.activeDocumentName;
    setWindowTitle(title);

    auto *central = new QWidget(this);
    auto *outer = new QHBoxLayout(central);

    auto *templatesBox = new QGroupBox(QStringLiteral("Report templates"), central);
    auto *grid = new QGridLayout(templatesBox);
    grid->addWidget(new QLabel(QStringLiteral("Template"), templatesBox), 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("Print"), templatesBox), 0, 3);
    static const std::array<const char *, 3> rowNames = {
        "&Cover page:", "&Body pages:", "&Summary page:"};
    for (int row = 0; row < 3; ++row) {
        const auto r = std::size_t(row);
        auto *label = new QLabel(QString::fromLatin1(rowNames[r]), templatesBox);
        m_templates[r] = new QComboBox(templatesBox);
        m_templates[r]->setObjectName(QStringLiteral("cmbTemplates(%1)").arg(row));
        m_templates[r]->setMinimumWidth(280);
        m_templates[r]->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        label->setBuddy(m_templates[r]);
        m_open[r] = new QToolButton(templatesBox);
        m_open[r]->setObjectName(QStringLiteral("cmdOpen(%1)").arg(row));
        if (const QAction *open = m_commands.action(QStringLiteral("cmdOpen(%1)").arg(row))) {
            m_open[r]->setText(open->text());
            m_open[r]->setToolTip(open->toolTip());
        }
        m_printable[r] = new QCheckBox(templatesBox);
        m_printable[r]->setObjectName(QStringLiteral("chkPrintable(%1)").arg(row));
        grid->addWidget(label, row + 1, 0);
        grid->addWidget(m_templates[r], row + 1, 1);
        grid->addWidget(m_open[r], row + 1, 2);
        grid->addWidget(m_printable[r], row + 1, 3, Qt::AlignCenter);
        connect(m_open[r], &QToolButton::clicked, this,
                [this, row] { m_commands.trigger(QStringLiteral("cmdOpen(%1)").arg(row)); });
        connect(m_templates[r], &QComboBox::currentIndexChanged, this, [this, r] {
            m_templates[r]->setToolTip(m_templates[r]->currentData().toString());
        });
    }
    grid->setColumnStretch(1, 1);

    auto *design = new QToolButton(templatesBox);
    design->setObjectName(QStringLiteral("imgPagelayout"));
    design->setIcon(pageLayoutIcon());
    design->setIconSize(QSize(48, 60));
    design->setText(QStringLiteral("Design page layout"));
    design->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    design->setPopupMode(QToolButton::InstantPopup);
    design->setToolTip(QStringLiteral("Open the page layout designer on a template"));
    auto *designMenu = new QMenu(design);
    m_commands.fill(designMenu,
                    {QStringLiteral("imgPagelayout(0)"), QStringLiteral("imgPagelayout(1)"),
                     QStringLiteral("imgPagelayout(2)")});
    design->setMenu(designMenu);
    grid->addWidget(design, 4, 0, 1, 4, Qt::AlignLeft);
    outer->addWidget(templatesBox, 1);

    auto *buttons = new QVBoxLayout;
    // The buttons show their commands' texts and tips; Ctrl+P and Ctrl+Shift+P are the
    // commands' own shortcuts.
    const auto addButton = [&](const QString &name) {
        const QAction *command = m_commands.action(name);
        auto *button = new QPushButton(command ? command->text() : name, central);
        button->setObjectName(name);
        button->setToolTip(command ? command->toolTip() : QString());
        button->setEnabled(!command || command->isEnabled());
        connect(button, &QPushButton::clicked, this, [this, name] { m_commands.trigger(name); });
        buttons->addWidget(button);
        return button;
    };
    addButton(QStringLiteral("cmdPrintPreview"))->setDefault(true);
    addButton(QStringLiteral("cmdPrint"));
    addButton(QStringLiteral("cmdPDF"));
    addButton(QStringLiteral("cmdSpreadsheet"));
    buttons->addSpacing(12);
    addButton(QStringLiteral("cmdLoadGroup"));
    addButton(QStringLiteral("cmdSaveGroup"));
    addButton(QStringLiteral("cmdSaveAsDefault"));
    buttons->addSpacing(12);
    addButton(QStringLiteral("cmdProperties"));
    buttons->addStretch(1);
    addButton(QStringLiteral("cmdCancel"));
    outer->addLayout(buttons);

    // The load-group button carries the loaded group's name as its tool tip.
    m_loadGroup = new QToolButton(this);
    m_loadGroup->hide();
    m_loadGroup->setObjectName(QStringLiteral("cmdLoadGroupTip"));

    setCentralWidget(central);
    statusBar()->showMessage(QStringLiteral("%1 items in %2")
                                 .arg(m_context.spec.itemCount())
                                 .arg(QFileInfo(m_context.paths.sifPath).fileName()));

    resize(720, 300);
}

QString frmMenu::resolved(const QString &path) const {
    return PathRules::resolveAgainst(m_context.paths.jobFile, PrintSelection::localPath(path));
}

void frmMenu::fillTemplateLists() {
    const QDir folder(m_templateDirectory);
    for (int row = 0; row < 3; ++row) {
        QComboBox *combo = m_templates[std::size_t(row)];
        combo->clear();
        const QString pattern = QLatin1Char('*') + templateExtension(rowKinds[std::size_t(row)]);
        const QStringList names = folder.entryList({pattern}, QDir::Files, QDir::Name);
        for (const QString &name : names)
            combo->addItem(name.left(name.size() - 4), folder.filePath(name));
    }
}

void frmMenu::refreshTemplateLists() {
    const ReportSelection before = selection();
    {
        std::array<std::unique_ptr<QSignalBlocker>, 3> quiet;
        for (std::size_t row = 0; row < 3; ++row)
            quiet[row] = std::make_unique<QSignalBlocker>(m_templates[row]);
        fillTemplateLists();
        for (std::size_t row = 0; row < 3; ++row)
            selectTemplate(int(row), before.templates[row]);
    }
    for (std::size_t row = 0; row < 3; ++row)
        m_templates[row]->setToolTip(m_templates[row]->currentData().toString());
}

void frmMenu::selectTemplate(int row, const QString &path) {
    QComboBox *combo = m_templates[std::size_t(row)];
    if (path.isEmpty()) {
        combo->setCurrentIndex(-1);
        return;
    }
    int index = combo->findData(path);
    if (index < 0) {
        const QString name = QFileInfo(path).fileName();
        combo->addItem(name.left(name.size() - 4), path);
        index = combo->count() - 1;
    }
    combo->setCurrentIndex(index);
}

ReportSelection frmMenu::selection() const {
    ReportSelection s;
    for (std::size_t row = 0; row < 3; ++row) {
        s.templates[row] = m_templates[row]->currentData().toString();
        s.printable[row] = ReportSelection::flag(m_printable[row]->isChecked());
    }
    return s;
}

bool frmMenu::dispatch(const QString &command) {
    return m_commands.dispatch(command);
}

void frmMenu::warn(const QString &text) {
    m_prompter.message(text, QString(), MessageIcon::Exclamation);
}

void frmMenu::openTemplate(int row) {
    const std::optional<QString> path =
        m_prompter.openFile(openTemplateDialog(row, m_templateDirectory));
    if (!path)
        return;
    const TemplateKind kind = rowKinds[std::size_t(row)];
    if (templateKindOfPath(*path) != kind) {
        warn(notValidTemplateMessage(kind));
        return;
    }
    selectTemplate(row, *path);
}

void frmMenu::loadGroup() {
    if (!m_loadedGroup.isEmpty()) {
        const MessageAnswer answer =
            m_prompter.message(GroupFile::loadedToolTip(m_loadedGroup), QString(),
                               MessageIcon::Question, MessageButtons::YesNo, MessageAnswer::Yes);
        if (answer != MessageAnswer::Yes)
            return;
    }
    const std::optional<QString> path =
        m_prompter.openFile(GroupFile::openDialog(m_context.job.templateDirectory()));
    if (!path)
        return;
    if (!isGroupPath(*path)) {
        warn(GroupFile::notValidMessage());
        return;
    }
    try {
        const ReportSelection group = GroupFile::read(*path);
        for (std::size_t row = 0; row < ReportSelection::Rows; ++row) {
            m_printable[row]->setChecked(group.isPrintable(row));
            selectTemplate(int(row), PrintSelection::localPath(group.templates[row]));
        }
        m_loadedGroup = *path;
        m_loadedGroupSelection = selection();
        m_loadGroup->setToolTip(GroupFile::loadedToolTip(*path));
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Load Group."), error);
    }
}

void frmMenu::saveGroup() {
    const ReportSelection s = selection();
    if (s.templates[0].isEmpty() && s.templates[1].isEmpty() && s.templates[2].isEmpty()) {
        warn(GroupFile::nothingToGroupMessage());
        return;
    }
    const std::optional<QString> path =
        m_prompter.saveFile(GroupFile::saveDialog(m_context.job.templateDirectory()));
    if (!path)
        return;
    try {
        GroupFile::write(*path, s);
        confirmOutput(m_prompter, QStringLiteral("Template group"), *path);
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Save Group."), error);
    }
}

void frmMenu::saveAsDefault() {
    const ReportSelection s = selection();
    const QString refusal = MenuChecks::beforeSaveAsDefault(s);
    if (!refusal.isEmpty()) {
        warn(refusal);
        return;
    }
    std::array<bool, 3> templateRows{};
    for (std::size_t row = 0; row < 3; ++row) {
        const QString &path = s.templates[row];
        if (path.isEmpty())
            continue;
        if (!QFileInfo::exists(path)) {
            m_prompter.message(MenuChecks::cannotSaveQuestion(QFileInfo(path).fileName()),
                               QString(), MessageIcon::Exclamation, MessageButtons::OkCancel,
                               MessageAnswer::Ok);
            continue;
        }
        templateRows[row] = true;
    }
    try {
        m_context.job.writeSelection(s, templateRows);
        confirmOutput(m_prompter, QStringLiteral("Default template choice"), m_context.job.path());
    } catch (const RuntimeError &error) {
        reportError(m_prompter, QStringLiteral("Save As Default."), error);
    }
}

void frmMenu::openDesigner(int row) {
    try {
        m_context.job.writePageLayout(row + 1);
    } catch (const RuntimeError &) {
        // Ignored: the designer opens all the same; only the remembered kind is lost.
    }
    const QString chosen = m_templates[std::size_t(row)]->currentData().toString();
    if (chosen.isEmpty()) {
        m_actions.openDesigner(row, QStringLiteral("Untitled") +
                                        templateExtension(rowKinds[std::size_t(row)]));
        return;
    }
    if (!QFileInfo::exists(chosen)) {
        static const std::array<const char *, 3> notFound = {"Cover Page Template Not Found.",
                                                             "Custom Template Not Found.",
                                                             "Summary Page Template Not Found."};
        warn(QString::fromLatin1(notFound[std::size_t(row)]));
        return;
    }
    m_actions.openDesigner(row, chosen);
}

void frmMenu::closeEvent(QCloseEvent *event) {
    QSettings settings;
    settings.setValue(QStringLiteral("frmMenu/geometry"), saveGeometry());
    event->accept();
    ShutDown(m_context);
}

} // namespace tavrel
