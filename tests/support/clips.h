#pragma once
// What the tests that judge clips read from them.
#include "model/mediaclip.h"

// The kinds of a clip's findings, in their order.
inline QList<IssueKind> issueKinds(const MediaClip &clip)
{
    QList<IssueKind> kinds;
    for (const ClipIssue &issue : clip.issues)
        kinds.append(issue.kind);
    return kinds;
}
