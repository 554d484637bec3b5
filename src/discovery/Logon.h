#pragma once
// The logon values StartupPrograms, Userinit and Shell: each holds a list of
// programs in one text; each program gets a row of its own, found on disk by
// trying a fixed list of folders.
#include <string>

#include "discovery/ScanContext.h"

namespace tessmark::discovery {

// Every double quote removed, cut at the first NUL, blanks stripped on the right.
std::string CleanValueText(const std::string& text);

// keyPath under HKEY_LOCAL_MACHINE; logonType 1 (StartupPrograms), 2 (Userinit)
// or 3 (Shell). Unlike the other scanners nothing here ignores errors.
void AddLogon(ScanContext& form, const std::string& keyPath, vb::Integer logonType);

// Appends one program to a list value.
void AddLogonFolder(ScanContext& form, const std::string& keyPath, const std::string& valueName,
                    const std::string& program);

// The key AddLogon reads for a logon type, as the catalogue files it.
std::string LogonKey(vb::Integer logonType);

}  // namespace tessmark::discovery
