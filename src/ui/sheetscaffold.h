#pragma once

#include <QWidget>

#include <functional>

class QLabel;
class QVBoxLayout;

// The frame of every modal sheet: title, optional subtitle and close button on `ink`, then the
// content.
class SheetScaffold final : public QWidget
{
    Q_OBJECT
public:
    SheetScaffold(const QString &title, const QString &subtitle, std::function<void()> onClose = {},
                  QWidget *parent = nullptr);
    void setContent(QWidget *content);
    QWidget *content() const { return m_content; }
    // Over a backdrop of its own (the settings window) the scaffold leaves `ink` out.
    void setOpaque(bool opaque)
    {
        m_opaque = opaque;
        update();
    }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QVBoxLayout *m_layout;
    QWidget *m_content = nullptr;
    bool m_opaque = true;
};
