#pragma once

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

} // namespace testsupport
