#include "standalone/desk/VideoView.h"
#include "tests/support/Test.h"

#include <QQuickWindow>
#include <QSignalSpy>

/// The item that shows a picture.
class tst_VideoView : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void showsItsImage();
    void anotherImageReplacesIt();
    void keepsTheAspectRatio_data();
    void keepsTheAspectRatio();
    void fillsTheItemIfStretched();
    void smoothSelectsTheFiltering();
    void showsNothingWithoutAnImage();
    void pointsAreRelativeToTheImage();
    void isLiveOnlyWhileItCanBeSeen();
    void followsItsWindow();

private:
    /// Red, green, blue and white quarters.
    static QImage pattern(const QSize &size)
    {
        QImage image(size, QImage::Format_RGB32);
        for (int y = 0; y < size.height(); ++y)
            for (int x = 0; x < size.width(); ++x) {
                const bool right = x >= size.width() / 2;
                const bool below = y >= size.height() / 2;
                image.setPixel(x, y,
                               below ? (right ? qRgb(255, 255, 255) : qRgb(0, 0, 255))
                                     : (right ? qRgb(0, 255, 0) : qRgb(255, 0, 0)));
            }
        return image;
    }
    QRgb at(int x, int y) { return m_window->grabWindow().pixel(x, y); }

    std::unique_ptr<QQuickWindow> m_window;
    VideoView *m_view = nullptr;
};

void tst_VideoView::init()
{
    Test::init();
    m_window = std::make_unique<QQuickWindow>();
    m_window->setColor(Qt::black);
    m_window->resize(200, 200);
    m_view = new VideoView(m_window->contentItem());
    m_view->setSize({200, 200});
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void tst_VideoView::cleanup() { m_window.reset(); }

void tst_VideoView::showsItsImage()
{
    m_view->setImage(pattern({20, 20}));
    QCOMPARE(at(50, 50), qRgb(255, 0, 0));
    QCOMPARE(at(150, 50), qRgb(0, 255, 0));
    QCOMPARE(at(50, 150), qRgb(0, 0, 255));
    QCOMPARE(at(150, 150), qRgb(255, 255, 255));
}

void tst_VideoView::anotherImageReplacesIt()
{
    QSignalSpy changed(m_view, &VideoView::imageChanged);
    m_view->setImage(pattern({20, 20}));
    QCOMPARE(at(50, 50), qRgb(255, 0, 0));
    m_view->setImage(pattern({20, 20}).mirrored(true, false));
    QCOMPARE(at(50, 50), qRgb(0, 255, 0));
    QCOMPARE(changed.size(), 2);
    m_view->setImage(m_view->image());
    QCOMPARE(changed.size(), 2);
}

void tst_VideoView::keepsTheAspectRatio_data()
{
    QTest::addColumn<QSize>("image");
    QTest::addColumn<QRectF>("place");
    QTest::newRow("wide") << QSize(40, 20) << QRectF(0, 50, 200, 100);
    QTest::newRow("high") << QSize(20, 40) << QRectF(50, 0, 100, 200);
    QTest::newRow("larger than the item") << QSize(800, 400) << QRectF(0, 50, 200, 100);
}

void tst_VideoView::keepsTheAspectRatio()
{
    QFETCH(QSize, image);
    QFETCH(QRectF, place);
    m_view->setImage(pattern(image));
    QCOMPARE(m_view->imageRect(), place);
    const QPoint inside = place.topLeft().toPoint() + QPoint(5, 5);
    QCOMPARE(at(inside.x(), inside.y()), qRgb(255, 0, 0));
    QCOMPARE(at(2, 2), qRgb(0, 0, 0));
    m_view->setSize({100, 100});
    QCOMPARE(m_view->imageRect(), QRectF(place.topLeft() / 2, place.size() / 2));
    QCOMPARE(at(150, 100), qRgb(0, 0, 0));
}

void tst_VideoView::fillsTheItemIfStretched()
{
    m_view->setStretched(true);
    m_view->setImage(pattern({40, 10}));
    QCOMPARE(at(2, 2), qRgb(255, 0, 0));
    QCOMPARE(at(197, 197), qRgb(255, 255, 255));
}

void tst_VideoView::smoothSelectsTheFiltering()
{
    QImage image(2, 1, QImage::Format_RGB32);
    image.setPixel(0, 0, qRgb(0, 0, 0));
    image.setPixel(1, 0, qRgb(255, 255, 255));
    m_view->setStretched(true);
    m_view->setSmooth(false);
    m_view->setImage(image);
    QCOMPARE(at(95, 100), qRgb(0, 0, 0));
    QCOMPARE(at(105, 100), qRgb(255, 255, 255));
    m_view->setSmooth(true);
    const int between = qRed(at(95, 100));
    QVERIFY2(between > 80 && between < 160, qPrintable(QString::number(between)));
}

void tst_VideoView::showsNothingWithoutAnImage()
{
    m_view->setImage(pattern({20, 20}));
    QCOMPARE(at(50, 50), qRgb(255, 0, 0));
    m_view->setImage({});
    QCOMPARE(at(50, 50), qRgb(0, 0, 0));
    QVERIFY(m_view->imageRect().isEmpty());
    m_view->setImage(pattern({20, 20}));
    QCOMPARE(at(50, 50), qRgb(255, 0, 0));
}

void tst_VideoView::pointsAreRelativeToTheImage()
{
    QCOMPARE(m_view->onImage({10, 10}), QPointF(-1, -1));
    m_view->setImage(pattern({40, 20}));
    QCOMPARE(m_view->onImage({0, 50}), QPointF(0, 0));
    QCOMPARE(m_view->onImage({100, 100}), QPointF(0.5, 0.5));
    QCOMPARE(m_view->onImage({200, 150}), QPointF(1, 1));
    QVERIFY(m_view->onImage({100, 40}).y() < 0);
}

void tst_VideoView::isLiveOnlyWhileItCanBeSeen()
{
    QSignalSpy changed(m_view, &VideoView::liveChanged);
    QVERIFY(m_view->live());
    m_view->setVisible(false);
    QVERIFY(!m_view->live());
    m_view->setVisible(true);
    QVERIFY(m_view->live());
    m_window->contentItem()->setVisible(false);
    QVERIFY(!m_view->live());
    m_window->contentItem()->setVisible(true);
    QVERIFY(m_view->live());
    QCOMPARE(changed.size(), 4);
    m_window->hide();
    QTRY_VERIFY(!m_view->live());
    m_window->show();
    QTRY_VERIFY(m_view->live());
}

void tst_VideoView::followsItsWindow()
{
    QQuickWindow other;
    m_view->setParentItem(other.contentItem());
    QVERIFY(!m_view->live());
    other.show();
    QTRY_VERIFY(m_view->live());
    m_window->hide();
    QTRY_VERIFY(!m_window->isExposed());
    QVERIFY(m_view->live());
    m_view->setParentItem(nullptr);
    QVERIFY(!m_view->live());
    m_view->setParentItem(m_window->contentItem());
    QVERIFY(!m_view->live());
    m_window->show();
    QTRY_VERIFY(m_view->live());
}

ZVT_TEST(tst_VideoView)
#include "tst_VideoView.moc"
