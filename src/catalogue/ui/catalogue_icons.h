// The pictures of the sample file database.
#pragma once

#include <QIcon>

namespace sonavel {

// By the file name without its extension, of the database's own pictures or else the program's.
QIcon CatalogueIcon(const char* name);

}  // namespace sonavel
