#pragma once

// The report sidebar's tests: a window over the session fixture and a pack with audio, a
// finding and a duplicate.
#include "uifixture.h"

#include "ui/contentview.h"
#include "ui/kitbuttons.h"
#include "ui/kitwidgets.h"
#include "ui/sidebar/reportsidebarview.h"
#include "ui/sidebar/selectchip.h"

#include <QLabel>

// Banners still on screen, by hint id (dismissed ones leave through deleteLater).
inline QStringList visibleHints(QWidget *root)
{
    QStringList ids;
    for (HintBanner *banner : root->findChildren<HintBanner *>())
        if (banner->isVisibleTo(root))
            ids.append(banner->objectName());
    ids.sort();
    return ids;
}

// Labels on screen with that object name (rebuilt rows leave through deleteLater, hidden).
inline QList<QLabel *> visibleLabels(QWidget *root, const QString &name)
{
    QList<QLabel *> shown;
    for (QLabel *label : root->findChildren<QLabel *>(name))
        if (label->isVisibleTo(root))
            shown.append(label);
    return shown;
}

class Sidebar : public WindowTest
{
protected:
    ReportSidebarView &sidebar() { return *window().content()->sidebar(); }
    NamingCard &naming() { return *sidebar().namingCard(); }
    BatchCard &batch() { return *sidebar().batchCard(); }

    // A sidebar of its own over the fixture's desktop, outside any window.
    std::unique_ptr<ReportSidebarView> standalone(const UiContext &ctx)
    {
        auto view = std::make_unique<ReportSidebarView>(ctx, m_desktop);
        view->resize(ReportSidebarView::kWidth, 900);
        view->show();
        QApplication::processEvents();
        return view;
    }

    // loud.mov has audio (a warning), quiet.mov is clean, twin_a and twin_b are one file twice.
    void addBusyPack()
    {
        const qsizetype before = vm().clips().size();
        withAudio(QStringLiteral("loud.mov"));
        vm().handleDrop({url(touch(QStringLiteral("loud.mov"))),
                         url(touch(QStringLiteral("quiet.mov"))),
                         url(touch(QStringLiteral("twin_a.mov"), QByteArray(64, 't'))),
                         url(touch(QStringLiteral("twin_b.mov"), QByteArray(64, 't')))});
        ASSERT_TRUE(waitUntil([this] { return !vm().isScanning(); }));
        ASSERT_EQ(vm().clips().size(), before + 4);
    }
};
