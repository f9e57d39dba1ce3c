#pragma once

#include "render/CancelToken.h"

#include <QString>
#include <QtGlobal>

namespace tavrel {

// Where a section keeps its "Page n of  m" box: such a band is not drawn while the section is
// laid out but in the page-field pass, when the page count is known.
struct PageFieldFlags {
    bool inHeader = false;
    bool inFooter = false;

    bool any() const { return inHeader || inFooter; }
};

// The state of one print job, shared by the print job and the section renderers.
struct JobState {
    bool coverPrintable = false;
    bool bodyPrintable = false;
    bool summaryPrintable = false;
    bool landscape = false;
    bool htmlExport = false;
    bool rtfExport = false;

    qint16 coverPageCount = 0;
    qint16 bodyPageCount = 0;
    qint16 summaryPageCount = 0;
    qint16 totalPageCount = 0;    // PageCount read after EndDoc
    qint16 overlayPageNumber = 0; // page being overlaid in the page-field pass

    PageFieldFlags coverPageFields;
    PageFieldFlags bodyPageFields;
    PageFieldFlags summaryPageFields;

    QString exportDirectory;
    QString exportBaseName;

    // Set before a job starts, the job does nothing.
    bool stopRequest = false;
    // Raised by the user while the job runs (possibly from another thread): the job stops at
    // the next page or row and draws no page fields. Null when the job cannot be cancelled.
    const CancelToken *cancel = nullptr;

    bool cancelRequested() const { return cancel && cancel->isCancelled(); }

    bool anyPageField() const {
        return coverPageFields.any() || bodyPageFields.any() || summaryPageFields.any();
    }
};

} // namespace tavrel
