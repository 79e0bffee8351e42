#include "hlx/CString.h"

#include "tests/support/Test.h"

using hlx::CString;

class tst_hlxCString : public Test
{
    Q_OBJECT

private slots:
    void isEmptyByDefaultAndFromNull();
    void takesTextUpToTheZeroOrALength();
    void copiesAreIndependent();
    void assignsPlainText();
    void assignsItsOwnText();
    void comparesLikeStrcmp();
    void formatsTextsOfAnyLength();
    void givesItselfAsUtf8();
    void concatenates();
};

void tst_hlxCString::isEmptyByDefaultAndFromNull()
{
    const char *nothing = nullptr;
    for (const CString &text : {CString(), CString(""), CString(nothing), CString(nothing, 5)}) {
        QVERIFY(text.empty());
        QCOMPARE(text.length(), 0);
        QCOMPARE(text.c_str(), "");
    }
    CString text("x");
    text = nothing;
    QVERIFY(text.empty());
}

void tst_hlxCString::takesTextUpToTheZeroOrALength()
{
    QCOMPARE(CString("camera").c_str(), "camera");
    QCOMPARE(CString("camera", -1).length(), 6);
    QCOMPARE(CString("camera", 3).c_str(), "cam");
    QCOMPARE(CString("camera", 0).c_str(), "");
    const char unended[] = {'a', 'b'};
    QCOMPARE(CString(unended, 2).c_str(), "ab");
}

void tst_hlxCString::copiesAreIndependent()
{
    CString first("first text, long enough for the heap");
    CString copy(first);
    first = "second";
    QCOMPARE(copy.c_str(), "first text, long enough for the heap");
    CString moved(std::move(copy));
    QCOMPARE(moved.c_str(), "first text, long enough for the heap");
    first = std::move(moved);
    QCOMPARE(first.c_str(), "first text, long enough for the heap");
}

void tst_hlxCString::assignsPlainText()
{
    CString text;
    text = "plain";
    QCOMPARE(text.c_str(), "plain");
    QVERIFY(text == CString("plain"));
    QVERIFY(text == "plain");
    QVERIFY(text != "other");
}

void tst_hlxCString::assignsItsOwnText()
{
    CString text("a text that is long enough to lie on the heap");
    text = text.c_str() + 7;
    QCOMPARE(text.c_str(), "that is long enough to lie on the heap");
}

void tst_hlxCString::comparesLikeStrcmp()
{
    const CString text("Connected");
    QCOMPARE(text.compare("Connected"), 0);
    QVERIFY(text.compare("connected") < 0);
    QVERIFY(text.compare("Connect") > 0);
    QVERIFY(text.compare(nullptr) > 0);
    QCOMPARE(CString().compare(nullptr), 0);
    QVERIFY(CString("a") < CString("b"));
}

void tst_hlxCString::formatsTextsOfAnyLength()
{
    QCOMPARE(CString::FromFormat("/Temp/ps%d.bpl", 3).c_str(), "/Temp/ps3.bpl");
    QCOMPARE(CString::FromFormat("%s", "").c_str(), "");
    const std::string longText(100000, 'x');
    QCOMPARE(CString::FromFormat("%s!", longText.c_str()).length(), 100001);
}

void tst_hlxCString::givesItselfAsUtf8()
{
    const CString text("Gr\xc3\xb6\xc3\x9f"
                       "e");
    QCOMPARE(text.ConvertToUTF8().c_str(), text.c_str());
}

void tst_hlxCString::concatenates()
{
    const CString left("ps0.bpl");
    QCOMPARE((left + ".txt").c_str(), "ps0.bpl.txt");
    QCOMPARE((left + "").c_str(), "ps0.bpl");
    QCOMPARE((left + nullptr).c_str(), "ps0.bpl");
    QCOMPARE(left.c_str(), "ps0.bpl");
}

ZVT_TEST(tst_hlxCString)
#include "tst_hlxCString.moc"
