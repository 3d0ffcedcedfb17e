#pragma once
// Does a text that goes to the server at once hold a statement that ends the transaction round it? Pure, any thread,
// nothing raises; one walk, so the time grows with the text's length alone.
//
// Looked at is the first word of each piece between semicolons: COMMIT, ROLLBACK, ABORT, END, BEGIN, START, PREPARE.
// Texts in quotes or brackets, comments and $-quoted bodies count for nothing. Behind CREATE an END or a BEGIN belongs
// to the body of what is created.

#include <QStringView>

bool EndsTransaction(QStringView sql);
