#include "uifixture.h"

#include "ui/sidebar/panelparts.h"

#include <QLabel>

#include <memory>

TEST(StyleKit, WrappedPanelLabelsMeasureTheirCurrentTextAndFont)
{
    // Panel labels remember their heights; a new text or font must still be measured afresh,
    // and the answers must be the ones a plain label gives.
    QLabel *label = PanelParts::label(QStringLiteral("short"), 12, 0.8);
    std::unique_ptr<QLabel> owner(label);
    label->setWordWrap(true);
    QLabel plain;
    plain.setFont(label->font());
    plain.setWordWrap(true);
    const auto same = [&](const QString &text) {
        label->setText(text);
        plain.setText(text);
        for (int width : {60, 200, 60, 200})
            EXPECT_EQ(label->heightForWidth(width), plain.heightForWidth(width)) << width;
    };
    same(QStringLiteral("short"));
    const int oneLine = label->heightForWidth(200);
    same(QStringLiteral("a much longer finding that has to wrap over several lines at sixty"));
    EXPECT_GT(label->heightForWidth(60), oneLine * 2);
    QFont bigger = label->font();
    bigger.setPixelSize(24);
    label->setFont(bigger);
    plain.setFont(bigger);
    same(label->text());
    EXPECT_GT(label->heightForWidth(200), oneLine);
}
