#pragma once

#include "designer/DesignCanvas.h"
#include "designer/DesignerDocument.h"
#include "designer/frmCustomLayout.h"
#include "shell/JobFile.h"

#include <memory>

namespace testsupport {

// A designer window as the tests open it: the job model read from jobPath (kept in job, which
// must outlive the window), file dialogs starting in folder, half-inch margins.
inline std::unique_ptr<tavrel::frmCustomLayout>
openDesigner(const QString &jobPath, tavrel::JobFile &job, const QString &folder,
             tavrel::Prompter &prompter, tavrel::DesignerActions &actions) {
    tavrel::DesignerEnvironment environment;
    job = tavrel::JobFile::load(jobPath);
    environment.job = &job;
    environment.templateFolder = folder;
    environment.documentName = QStringLiteral("Demo.spec");
    environment.marginLeft = environment.marginTop = 720;
    environment.marginRight = environment.marginBottom = 720;
    return std::make_unique<tavrel::frmCustomLayout>(environment, prompter, actions);
}

// A new box as the designer makes it: a field by its caption, a note by its text.
inline tavrel::BoxInfo
newBox(const QString &caption, qint32 width = 1440, qint32 height = 300,
       tavrel::NewBoxRequest::Type type = tavrel::NewBoxRequest::Type::Field) {
    tavrel::NewBoxRequest request;
    request.type = type;
    request.caption = caption;
    tavrel::BoxInfo box = tavrel::LayoutEdits::makeBox(request);
    box.width = width;
    box.height = height;
    return box;
}

// Places box in the body at left, top (twips) as one edit; returns its slot.
inline int addBox(tavrel::frmCustomLayout &window, const tavrel::BoxInfo &box, qint32 left,
                  qint32 top) {
    tavrel::TemplateLayout layout = window.document().layout();
    const int slot =
        tavrel::LayoutEdits::placeBox(layout, box, tavrel::Container::mainPort(), left, top);
    window.document().change(layout, QStringLiteral("test"));
    return slot;
}

inline int addBox(tavrel::frmCustomLayout &window, const QString &caption, qint32 left,
                  qint32 top) {
    return addBox(window, newBox(caption), left, top);
}

// The centre of a box on the canvas, in canvas pixels.
inline QPoint centreOf(tavrel::frmCustomLayout &window, int slot) {
    return window.canvas()->widgetRect(window.canvas()->boxPageRect(slot)).center();
}

} // namespace testsupport
