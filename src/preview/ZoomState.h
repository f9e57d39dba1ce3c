#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace tavrel {

// The preview's zoom modes, numbered as the window's zoom-mode tool lists them.
enum class ZoomMode {
    Percentage = 0,
    Thumbnail = 1,
    TwoPages = 2,
    WholePage = 3,
    PageWidth = 4,
    Stretch = 5,
};

// The zoom of the preview: a mode and, for "Percentage", the percentage. The fitting modes get
// their percentage from the view (it depends on the window's size); the view reports it back
// through setShownPercent so that the percentage tool always shows what is on screen.
class ZoomState {
public:
    static constexpr int MinPercent = 10;
    static constexpr int MaxPercent = 400;
    // The step of zoom in / zoom out, in percentage points.
    static constexpr int StepPercent = 25;

    static QString modeName(ZoomMode mode);
    static std::optional<ZoomMode> modeFromName(const QString &name);
    // "Percentage", "Thumbnail", "Two Pages", "Whole Page", "Page Width", "Stretch".
    static QStringList modeNames();
    // "25%", "50%", "75%", "100%", "150%", "200%", "400%".
    static QStringList percentChoices();
    // The number in front of the "%" ("75%" and "75" give 75); nothing for other texts.
    static std::optional<int> parsePercent(const QString &text);
    static QString percentText(int percent);

    ZoomMode mode() const { return m_mode; }
    int percent() const { return m_percent; }
    // The percentage on screen: the set one in "Percentage" mode, else what the view fitted.
    int shownPercent() const { return m_mode == ZoomMode::Percentage ? m_percent : m_shown; }

    void setMode(ZoomMode mode) { m_mode = mode; }
    // Sets mode "Percentage" at the percentage, kept within MinPercent..MaxPercent.
    void setPercent(int percent);
    // Plus / minus the step from what is on screen, mode "Percentage".
    void zoomIn() { setPercent(shownPercent() + StepPercent); }
    void zoomOut() { setPercent(shownPercent() - StepPercent); }
    void setShownPercent(int percent) { m_shown = percent; }

private:
    ZoomMode m_mode = ZoomMode::WholePage;
    int m_percent = 100;
    int m_shown = 100;
};

} // namespace tavrel
