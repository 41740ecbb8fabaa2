// Whom a file belongs to and who may do what with it.
#pragma once

namespace sonavel {

// Gives the file `to` what the file `from` has, both named by their descriptors: owner and group as
// far as the system lets this person give them, access list, extended attributes and mode. Where
// the owner, the group or the list cannot be kept, `to` allows less than `from`, never more. `to`
// must allow nobody but its owner when this is called.
void CopyFileAccess(int from, int to);

}  // namespace sonavel
