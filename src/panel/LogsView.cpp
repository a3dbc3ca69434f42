#include "panel/LogsView.h"

#include "core/NextPass.h"
#include "paint/Colors.h"
#include "panel/ClearButton.h"
#include "panel/LogList.h"
#include "panel/LogListModel.h"
#include "panel/PanelStyle.h"
#include "panel/Separator.h"
#include "panel/StatTile.h"
#include "panel/SymbolIcon.h"
#include "panel/TextLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace {

// Logical pixels.
constexpr int tilesPadding = 16;
constexpr int tileSpacing = 10;
constexpr int footerPadding = 12;
constexpr int emptyHeight = 220;
constexpr int emptySpacing = 6;
constexpr double emptySymbolSide = 28;

/// The teal of the desktop that is usual in light surroundings.
constexpr QColor teal(48, 176, 199);

} // namespace

LogsView::LogsView(SessionStore& store)
    : m_store(store)
    , m_model(new LogListModel(store))
    , m_list(new LogList)
{
    m_model->setParent(this);
    m_list->setModel(m_model);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(makeTiles());
    column->addWidget(new Separator);
    m_emptyState = makeEmptyState();
    column->addWidget(m_emptyState);
    column->addWidget(m_list);
    column->addWidget(new Separator);
    column->addWidget(makeFooter());

    onNextPass(store, this, [this] {
        if (isVisible())
            reread();
    });
    reread();
}

void LogsView::showEvent(QShowEvent*)
{
    reread();
}

QWidget* LogsView::makeTiles()
{
    auto* tiles = new QWidget;
    auto* row = new QHBoxLayout(tiles);
    row->setContentsMargins(tilesPadding, tilesPadding, tilesPadding, tilesPadding);
    row->setSpacing(tileSpacing);
    const QString deskTime = QStringLiteral("Total desk time");
    const auto addTile = [&](const QString& label, const QColor& color) {
        auto* tile = new StatTile(label, deskTime, color);
        row->addWidget(tile, 1);
        return tile;
    };
    const auto toneOf = [](Phase phase) { return toQColor(factsOf(phase).darkTone); };
    m_deskTime = addTile(deskTime, teal);
    m_seated = addTile(QStringLiteral("Seated"), toneOf(Phase::sitting));
    m_standing = addTile(QStringLiteral("Standing"), toneOf(Phase::standing));
    m_pushups = addTile(QStringLiteral("Push-ups"), toneOf(Phase::pushups));
    return tiles;
}

QWidget* LogsView::makeEmptyState()
{
    auto* state = new QWidget;
    state->setMinimumHeight(emptyHeight);
    auto* column = new QVBoxLayout(state);
    column->setSpacing(emptySpacing);
    column->addStretch();
    column->addWidget(new SymbolView(QStringLiteral("clock.badge.questionmark"), emptySymbolSide,
                                     SymbolView::Shade::tertiary),
                      0, Qt::AlignHCenter);
    const auto addText = [column](const QString& text, double size, QFont::Weight weight,
                                  TextLabel::Shade shade) {
        auto* label = new TextLabel(text, size, weight, shade);
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignHCenter);
        column->addWidget(label);
    };
    addText(QStringLiteral("No sessions yet"), panelStyle::headlineSize, QFont::Bold,
            TextLabel::Shade::primary);
    addText(QStringLiteral("Finished phases will show up here automatically."),
            panelStyle::captionSize, QFont::Normal, TextLabel::Shade::secondary);
    column->addStretch();
    return state;
}

QWidget* LogsView::makeFooter()
{
    auto* footer = new QWidget;
    auto* row = new QHBoxLayout(footer);
    row->setContentsMargins(footerPadding, footerPadding, footerPadding, footerPadding);
    m_count = new TextLabel(QString(), panelStyle::captionSize, QFont::Normal,
                            TextLabel::Shade::secondary);
    row->addWidget(m_count, 1);
    auto* clear = new ClearButton(QStringLiteral("Clear History"));
    connect(clear, &QPushButton::clicked, this, [this] {
        m_store.entries = {};
        m_store.save();
    });
    row->addWidget(clear);
    return footer;
}

void LogsView::reread()
{
    const double seated = m_store.totalSittingSeconds();
    const double standing = m_store.totalStandingSeconds();
    m_deskTime->setValue(SessionStore::hoursString(seated + standing));
    m_seated->setValue(SessionStore::hoursString(seated));
    m_standing->setValue(SessionStore::hoursString(standing));
    m_pushups->setValue(QString::number(m_store.totalPushups()));
    m_model->reread();
    const std::size_t count = m_store.entries().size();
    m_list->setVisible(count > 0);
    m_emptyState->setVisible(count == 0);
    m_count->setText(QString::number(count) + QStringLiteral(" recorded sessions"));
}
