#pragma once

class QString;

/// Whether a text has four parts between its dots, none of them a number above 255. A part that is
/// empty or no number counts as 0.
bool isDottedQuad(const QString &text);
