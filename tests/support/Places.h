// Where this checkout's sources and its built programs are. Without a slash at the end; absolute.
#pragma once

#include <QString>

namespace places {

QString Source(); // the folder of the tree
QString Binary(); // the folder that it is built in; the programs stand in its "bin"

} // namespace places
