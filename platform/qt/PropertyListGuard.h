#pragma once

#include <QByteArrayView>
#include <QString>

/// A look at property-list bytes before a parser that recurses and unfolds gets them. Neither recurses; both
/// take memory and time in proportion to the input. The answer is the reason to refuse, or empty.

/// Refuses what is not UTF-8, holds NUL bytes or a document type of its own, or nests deeper than `deepest`.
QString reasonToRefuseXml(QByteArrayView bytes, int deepest);

/// Refuses circles, nesting deeper than `deepest`, more than `unfoldedPerByte` bytes unfolded for each byte
/// of input, and tables that point outside.
QString reasonToRefuseBinary(QByteArrayView bytes, int deepest, qint64 unfoldedPerByte);
