#pragma once

class QString;

/// Returns whether a text has four parts between its dots and none of them is a number above 255. A
/// part that is empty or not a number counts as 0.
bool isDottedQuad(const QString &text);
