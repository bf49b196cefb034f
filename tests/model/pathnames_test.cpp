// File kinds by extension: what discovery takes and what counts as a still.
#include "model/pathnames.h"

#include <gtest/gtest.h>

TEST(PathNames, KindsGoByTheLastComponentsExtensionInAnyCase)
{
    const struct {
        const char16_t *path;
        bool media;
        bool image;
    } rows[] = {
        {u"/show/intro.mov", true, false},
        {u"/show/Logo.PnG", true, true},
        {u"/show/still.heic", true, true},
        {u"/show/clip.prores", true, false},
        {u"/show/clip.movx", false, false},
        {u"/show/notes.txt", false, false},
        {u"/show/.png", false, false}, // a hidden file with no extension
        {u"/show/clip", false, false},
        {u"/show.mov/clip", false, false}, // a folder's extension is not the file's
        {u"/show/logo.png/", true, true},  // trailing slashes do not count
        {u"logo.jpeg", true, true},
        {u"/show/clip.m\u212Av", true, false},   // Kelvin sign: lower-cases to "mkv"
        {u"/show/still.p\u00F1g", false, false}, // not ASCII, and no such extension
        {u"", false, false},
    };
    for (const auto &row : rows) {
        const QString path = QString::fromUtf16(row.path);
        EXPECT_EQ(PathNames::isMedia(path), row.media) << path.toStdString();
        EXPECT_EQ(PathNames::isImage(path), row.image) << path.toStdString();
    }
}
