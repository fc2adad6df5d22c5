#pragma once

#include <QString>

/// The text without what stands from each opening character to the next closing one, both included. Nothing
/// takes its place; after each removal white space goes from both ends. Nesting is not understood, and a text
/// of fewer than 3 characters stays as it is.
QString stringWithStrippedEnclosedByCharToChar(const QString &text, QChar opening, QChar closing);
/// From "[" to "]".
QString stringWithStrippedBracketedText(const QString &text);
/// From "(" to ")".
QString stringWithStrippedParenthesizedText(const QString &text);

/// A text of 3 characters or more without the double quotes at both its ends; a text without them at both,
/// and
/// "" with nothing between, as it is.
QString stringByRemovingSurroundingQuotes(const QString &text);
