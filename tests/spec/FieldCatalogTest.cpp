#include "spec/FieldCatalog.h"
#include "common/TestRegistry.h"
#include "common/TestSupport.h"

#include <QSet>
#include <QTest>

using namespace tavrel;

class FieldCatalogTest : public QObject {
    Q_OBJECT

private slots:
    void codeForCaption_data();
    void codeForCaption();
    void itemTableIsOneToOne();
    void designerListShape();
    void nameIndexRoundTrip_data();
    void nameIndexRoundTrip();
    void totalLabel_data();
    void totalLabel();
    void headerFooterCaptionsAreDesignerCaptions();
    void settingParts_data();
    void settingParts();
    void noHeaderText_data();
    void noHeaderText();
};

void FieldCatalogTest::codeForCaption_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("code");
    QTest::newRow("part number") << "Part Number"
                                 << "PN";
    QTest::newRow("misspelt contents") << "Table of Contensts"
                                       << "TC";
    QTest::newRow("correct spelling has no code") << "Table of Contents"
                                                  << "";
    QTest::newRow("generic code is CG") << "Generic Code"
                                        << "CG";
    QTest::newRow("cust percent") << "Cust%"
                                  << "S-";
    QTest::newRow("deal percent") << "Deal%"
                                  << "P%";
    QTest::newRow("option pair") << "Option Note Code / Description"
                                 << "ANN";
    QTest::newRow("carton (not in designer list)") << "Carton"
                                                   << "QC";
    QTest::newRow("rec#") << "Rec#"
                          << "REC";
    QTest::newRow("case matters") << "part number"
                                  << "";
    QTest::newRow("trailing blank matters") << "Part Number "
                                            << "";
    QTest::newRow("no code: Taxable") << "Taxable"
                                      << "";
    QTest::newRow("no code: Image") << "Image"
                                    << "";
    QTest::newRow("no code: total") << "Total Option / Description"
                                    << "";
    QTest::newRow("no code: order") << "P. O. Number"
                                    << "";
    QTest::newRow("empty") << ""
                           << "";
}

void FieldCatalogTest::codeForCaption() {
    QFETCH(QString, caption);
    QFETCH(QString, code);
    QCOMPARE(FieldCatalog::codeForCaption(caption), code);
    if (!code.isEmpty())
        QCOMPARE(FieldCatalog::captionForCode(code), caption);
}

void FieldCatalogTest::itemTableIsOneToOne() {
    const QList<ItemField> &fields = FieldCatalog::itemFields();
    QCOMPARE(fields.size(), 46);
    QCOMPARE(fields.first().caption, QStringLiteral("Special Number"));
    QCOMPARE(fields.last().code, QStringLiteral("PZ"));
    QSet<QString> captions;
    QSet<QString> codes;
    for (const ItemField &field : fields) {
        captions.insert(field.caption);
        codes.insert(field.code);
    }
    QCOMPARE(captions.size(), 46);
    QCOMPARE(codes.size(), 46);
}

void FieldCatalogTest::designerListShape() {
    const QStringList &captions = FieldCatalog::designerCaptions();
    QCOMPARE(captions.size(), FieldCatalog::DesignerCaptionCount);
    QCOMPARE(QSet<QString>(captions.begin(), captions.end()).size(), 111);
    QCOMPARE(FieldCatalog::itemCaptions().size(), 48);
    QCOMPARE(FieldCatalog::pageCaptions().size(), 13);
    QCOMPARE(FieldCatalog::totalCaptions().size(), 15);
    QCOMPARE(FieldCatalog::orderHeaderCaptions().size(), 35);
    QCOMPARE(FieldCatalog::pageCaptions().first(), QStringLiteral("File Path"));
    QCOMPARE(FieldCatalog::totalCaptions().first(), QStringLiteral("Total Weight"));
    QCOMPARE(FieldCatalog::orderHeaderCaptions().first(), QStringLiteral("P. O. Number"));
    QVERIFY(captions.contains(QStringLiteral("Page n of  m")));
    QVERIFY(!captions.contains(QStringLiteral("Page n of m")));
    // Every item field except "Carton" and "Rec#" is offered among the item captions; "Rec#"
    // sits with the page captions.
    for (const ItemField &field : FieldCatalog::itemFields()) {
        if (field.code == QLatin1String("QC"))
            QVERIFY(!captions.contains(field.caption));
        else if (field.code == QLatin1String("REC"))
            QVERIFY(FieldCatalog::pageCaptions().contains(field.caption));
        else
            QVERIFY2(FieldCatalog::itemCaptions().contains(field.caption),
                     qPrintable(field.caption));
    }
}

void FieldCatalogTest::nameIndexRoundTrip_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("caption");
    QTest::newRow("first") << 0 << "Special Number";
    QTest::newRow("part number") << 6 << "Part Number";
    QTest::newRow("last item") << 47 << "EXT MG$";
    QTest::newRow("page n of m") << 57 << "Page n of  m";
    QTest::newRow("rec#") << 60 << "Rec#";
    QTest::newRow("shipping notes") << 75 << "Shipping Notes";
    QTest::newRow("last") << 110 << "Comments";
    QTest::newRow("below range") << -1 << "";
    QTest::newRow("above range") << 111 << "";
}

void FieldCatalogTest::nameIndexRoundTrip() {
    QFETCH(int, index);
    QFETCH(QString, caption);
    QCOMPARE(FieldCatalog::captionAt(index), caption);
    QCOMPARE(FieldCatalog::indexOfCaption(caption),
             caption.isEmpty() ? FieldCatalog::NoNameIndex : index);
}

void FieldCatalogTest::totalLabel_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("label");
    QTest::newRow("list") << "Total List$"
                          << "Total Unit List:";
    QTest::newRow("deal") << "Total Deal$"
                          << "Total Purchase:";
    QTest::newRow("option") << "Total Option / Description"
                            << "Options / Descriptions:";
    QTest::newRow("charges") << "Total Additional Charges"
                             << "Total Added Charges:";
    QTest::newRow("deal order") << "Total Deal$ Order"
                                << "Total Dealer Order:";
    QTest::newRow("no label: charges list") << "Additional Charges"
                                            << "";
    QTest::newRow("no label: item") << "List$"
                                    << "";
}

void FieldCatalogTest::totalLabel() {
    QFETCH(QString, caption);
    QFETCH(QString, label);
    QCOMPARE(FieldCatalog::totalLabel(caption), label);
}

void FieldCatalogTest::headerFooterCaptionsAreDesignerCaptions() {
    QCOMPARE(FieldCatalog::headerFooterCaptions().size(), 12);
    for (const QString &caption : FieldCatalog::headerFooterCaptions()) {
        QVERIFY2(FieldCatalog::pageCaptions().contains(caption), qPrintable(caption));
        QVERIFY(FieldCatalog::isHeaderFooterCaption(caption));
    }
    QVERIFY(!FieldCatalog::isHeaderFooterCaption(QStringLiteral("Rec#")));
}

void FieldCatalogTest::settingParts_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("length");
    QTest::addColumn<QString>("label");
    QTest::newRow("both") << "16,Part No."
                          << "16"
                          << "Part No.";
    QTest::newRow("no comma") << "16"
                              << "16"
                              << "";
    QTest::newRow("several commas") << " 12 , a, b "
                                    << "12"
                                    << "a, b";
    QTest::newRow("empty label") << "9,"
                                 << "9"
                                 << "";
    QTest::newRow("empty") << ""
                           << ""
                           << "";
}

void FieldCatalogTest::settingParts() {
    QFETCH(QString, value);
    QFETCH(QString, length);
    QFETCH(QString, label);
    QCOMPARE(FieldCatalog::lengthTextFromSetting(value), length);
    QCOMPARE(FieldCatalog::labelFromSetting(value), label);
}

void FieldCatalogTest::noHeaderText_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<bool>("none");
    QTest::newRow("image") << "Image" << true;
    QTest::newRow("complete") << "Complete" << true;
    QTest::newRow("taxable") << "Taxable" << true;
    QTest::newRow("part number") << "Part Number" << false;
    QTest::newRow("option code") << "Option Code" << false;
    QTest::newRow("total options") << "Total Option / Description" << false;
    QTest::newRow("lower case") << "image" << false;
    QTest::newRow("empty") << "" << false;
}

void FieldCatalogTest::noHeaderText() {
    QFETCH(QString, caption);
    QFETCH(bool, none);
    QCOMPARE(FieldCatalog::hasNoHeaderText(caption), none);
}

TAVREL_TEST(FieldCatalogTest)
#include "FieldCatalogTest.moc"
