#include "panel/AboutView.h"

#include "PanelTest.h"
#include "panel/Branding.h"
#include "panel/LinkButton.h"
#include "panel/LogoBanner.h"
#include "panel/TextLabel.h"

#include <QDesktopServices>
#include <QLayout>
#include <QUrl>

#include <memory>

namespace {

/// Takes the addresses that the desktop would open.
class Browser : public QObject
{
    Q_OBJECT

public:
    Browser() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "open"); }
    ~Browser() override { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }

    QList<QUrl> opened;

public Q_SLOTS:
    void open(const QUrl& url) { opened << url; }
};

class AboutViewTest : public testing::Test
{
protected:
    void show(const QString& logo)
    {
        view = std::make_unique<AboutView>(logo);
        view->setFixedWidth(width);
        showActive(*view);
    }

    TextLabel* label(const QString& start) const
    {
        for (auto* label : view->findChildren<TextLabel*>()) {
            if (label->text().startsWith(start))
                return label;
        }
        return nullptr;
    }
    LinkButton* link() const { return view->findChild<LinkButton*>(); }

    static constexpr int width = 340; ///< of the panel without its margins
    std::unique_ptr<AboutView> view;
    Browser browser;
};

} // namespace

TEST_F(AboutViewTest, aboveTheTitleStandsThePicture)
{
    show(branding::banner());
    const auto* banner = view->findChild<LogoBanner*>();
    ASSERT_NE(banner, nullptr);
    EXPECT_EQ(view->layout()->itemAt(0)->widget(), banner);
    EXPECT_EQ(banner->height(), 72 + 2 * 14);
    EXPECT_EQ(banner->width(), view->layout()->contentsRect().width());
    EXPECT_LT(banner->geometry().bottom(), label(QStringLiteral("Vantora"))->y());
}

TEST_F(AboutViewTest, thePicturesAreInTheProgram)
{
    for (const QString& path : {branding::banner(), branding::icon()})
        EXPECT_FALSE(QImage(path).isNull()) << path.toStdString();
}

TEST_F(AboutViewTest, theBannerIsDarkWithThePictureInItsMiddle)
{
    QImage picture(20, 20, QImage::Format_RGB32);
    picture.fill(QColor(255, 0, 0));
    LogoBanner banner(picture);
    banner.resize(340, 100);
    const QImage shown = banner.grab().toImage();
    EXPECT_EQ(shown.pixelColor(170, 50), QColor(255, 0, 0));
    EXPECT_EQ(shown.pixelColor(170 - 35, 50 - 35), QColor(255, 0, 0));
    EXPECT_EQ(shown.pixelColor(170 + 34, 50 + 34), QColor(255, 0, 0));
    for (const QPoint at : {QPoint(170 - 38, 50), QPoint(170 + 38, 50), QPoint(170, 12),
                            QPoint(170, 88), QPoint(20, 50)})
        EXPECT_LT(shown.pixelColor(at).lightness(), 40) << at.x() << ", " << at.y();
}

TEST_F(AboutViewTest, withoutAPictureTheTitleComesFirst)
{
    for (const QString& missing : {QString(), QStringLiteral(":/vantora/nothing.png")}) {
        show(missing);
        EXPECT_EQ(view->findChild<LogoBanner*>(), nullptr);
        EXPECT_EQ(view->layout()->itemAt(0)->widget(), label(QStringLiteral("Vantora")));
        EXPECT_EQ(view->layout()->count(), 3);
    }
}

TEST_F(AboutViewTest, theTitleHasTheVersionOfTheProgram)
{
    const QString before = QCoreApplication::applicationVersion();
    QCoreApplication::setApplicationVersion(QStringLiteral("3.14.1"));
    EXPECT_EQ(AboutView::appVersion(), QStringLiteral("3.14.1"));
    show(branding::banner());
    EXPECT_NE(label(QStringLiteral("Vantora v3.14.1")), nullptr);

    QCoreApplication::setApplicationVersion(QString());
    EXPECT_EQ(AboutView::appVersion(), QStringLiteral("1.0"));
    show(branding::banner());
    ASSERT_NE(label(QStringLiteral("Vantora")), nullptr);
    EXPECT_EQ(label(QStringLiteral("Vantora"))->text(), QStringLiteral("Vantora v1.0"));
    QCoreApplication::setApplicationVersion(before);
}

TEST_F(AboutViewTest, theCreditNamesTheMakerAndIsWhole)
{
    show(branding::banner());
    const TextLabel* credit = label(QStringLiteral("Made by "));
    ASSERT_NE(credit, nullptr);
    EXPECT_TRUE(credit->text().contains(branding::maker()));
    EXPECT_TRUE(credit->wordWrap());
    EXPECT_GT(credit->height(), 2 * credit->fontMetrics().height()) << "several lines";
    EXPECT_GE(credit->height(), credit->heightForWidth(credit->width()));
    EXPECT_TRUE(view->rect().contains(credit->geometry()));
}

TEST_F(AboutViewTest, aClickOnTheLinkOpensIt)
{
    show(branding::banner());
    ASSERT_NE(link(), nullptr);
    EXPECT_EQ(link()->text(), branding::linkTitle());
    EXPECT_EQ(link()->accessibleName(), branding::linkTitle());
    QTest::mouseClick(link(), Qt::LeftButton);
    EXPECT_EQ(browser.opened, QList<QUrl>{QUrl(branding::linkAddress())});
}

TEST_F(AboutViewTest, theKeyboardOpensTheLink)
{
    show(branding::banner());
    QTest::keyClick(view.get(), Qt::Key_Tab);
    ASSERT_TRUE(link()->hasFocus());
    QTest::keyClick(link(), Qt::Key_Space);
    QTest::keyClick(link(), Qt::Key_Return);
    const QUrl address(branding::linkAddress());
    EXPECT_EQ(browser.opened, (QList<QUrl>{address, address}));
}

#include "AboutViewTest.moc"
