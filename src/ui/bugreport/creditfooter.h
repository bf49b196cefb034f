#pragma once

#include <QAbstractButton>
#include <QUrl>

class Desktop;

// "Designed by <maker>" under the sidebar and the settings window; a click opens the maker's
// web site, whose host name is the tooltip.
class CreditFooter final : public QAbstractButton
{
    Q_OBJECT
public:
    CreditFooter(const QString &designedBy, Desktop &desktop, QWidget *parent = nullptr);

    static QUrl site();
    static QString maker();

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    bool m_hover = false;
};
