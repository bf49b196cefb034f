#include "pathnames.h"

namespace PathNames {

namespace {
qsizetype extensionDot(QStringView name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 ? dot : -1;
}
} // namespace

QString lastComponent(const QString &path)
{
    QStringView view(path);
    while (view.size() > 1 && view.endsWith(u'/'))
        view.chop(1);
    const qsizetype slash = view.lastIndexOf(u'/');
    return (slash < 0 ? view : view.mid(slash + 1)).toString();
}

QString extension(const QString &path)
{
    const QString name = lastComponent(path);
    const qsizetype dot = extensionDot(name);
    return dot < 0 ? QString() : name.mid(dot + 1);
}

QString deletingExtension(const QString &name)
{
    const QString last = lastComponent(name);
    const qsizetype dot = extensionDot(last);
    return dot < 0 ? last : last.left(dot);
}

const QSet<QString> &videoExtensions()
{
    static const QSet<QString> set{
        QStringLiteral("mov"),    QStringLiteral("mp4"),  QStringLiteral("m4v"),
        QStringLiteral("avi"),    QStringLiteral("mkv"),  QStringLiteral("mxf"),
        QStringLiteral("prores"), QStringLiteral("webm"), QStringLiteral("mpg"),
        QStringLiteral("mpeg")};
    return set;
}

const QSet<QString> &imageExtensions()
{
    static const QSet<QString> set{
        QStringLiteral("png"), QStringLiteral("jpg"),  QStringLiteral("jpeg"),
        QStringLiteral("tif"), QStringLiteral("tiff"), QStringLiteral("gif"),
        QStringLiteral("bmp"), QStringLiteral("heic"), QStringLiteral("webp")};
    return set;
}

bool isMedia(const QString &path)
{
    const QString ext = extension(path).toLower();
    return !ext.isEmpty() && (videoExtensions().contains(ext) || imageExtensions().contains(ext));
}

bool isImage(const QString &path)
{
    return imageExtensions().contains(extension(path).toLower());
}

} // namespace PathNames
