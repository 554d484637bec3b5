#pragma once
// The text rules for lists of programs held in one logon value: members are
// separated by commas, or by blanks in "Shell".
#include <string>

namespace tessmark::operations {

// The separator that goes behind a non-empty list before a member is added:
// always a blank for "Shell", otherwise a comma unless the list already ends
// in one.
std::string WithSeparator(std::string list, const std::string& LogonFolder);

// What is left when the loss of the list's last member shortens the text in
// front of it: disabling drops that text's last character (the separator),
// enabling keeps only its first character.
enum class LastMemberCut { DropLastCharacter, KeepFirstCharacter };

// Takes the first occurrence of ItemName out of the list, together with the
// character in front of it. A member that is not there costs the list its
// first Len(ItemName) + 1 characters: nothing checks that it was found.
// Disabling and enabling also drop a comma that then leads the rest; deleting
// keeps it.
std::string WithoutMember(const std::string& list, const std::string& ItemName, const std::string& LogonFolder,
                          LastMemberCut cut, bool dropLeadingComma = true);

}  // namespace tessmark::operations
