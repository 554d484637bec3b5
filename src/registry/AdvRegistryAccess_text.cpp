// The text half of the registry class: "REGEDIT4" files in a dialect of its
// own (no escapes, no continuation lines, "dword:0x..."), written and read by
// two routines that don't quite agree with each other.
#include "registry/AdvRegistryAccess.h"

#include <vector>

namespace tessmark::registry {

namespace reg = platform::reg;
using vb::VbError;

namespace {

constexpr const char* kCrLf = "\r\n";

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

}  // namespace

void AdvRegistryAccess::AppendText(const std::string& sRegFile, const std::string& text) {
    if (!files_ || !files_->AppendToFile(sRegFile, text)) throw VbError(vb::err::kPathFileAccess);
}

std::int32_t AdvRegistryAccess::ExportToReg(std::string sPath, std::string sRegFile, VbBool& IncludeSubkeys) {
    try {
        if (!files_) throw VbError(vb::err::kPathFileAccess);
        // Never over an existing file: the first backup made is the one that stays.
        if (files_->FileExists(sRegFile)) return 0;
        if (!files_->WriteWholeFile(sRegFile, std::string("REGEDIT4") + kCrLf + kCrLf))
            throw VbError(vb::err::kPathNotFound);
        // The box handed on is one nothing has ever set.
        return ExportKey(sPath, sRegFile, IncludeSubkeys, nullptr) != kFalse ? 1 : 0;
    } catch (const VbError&) {
        return 0;
    }
}

VbBool AdvRegistryAccess::ExportKey(std::string sKeyPath, const std::string& sRegFile, VbBool IncludeSubkeys,
                                    TextBox* box) {
    try {
        for (const auto& root : kRoots)
            sKeyPath = vb::Replace(sKeyPath, std::string(root.shortName), std::string(root.longName), 1, -1,
                                   vb::Compare::Text);
        // The box is never left out, so the progress step always runs, and an
        // unset one fails it before anything is written.
        if (ui_) ui_->DoEvents();
        if (!box) throw VbError(vb::err::kObjectNotSet);
        box->Text = sKeyPath;

        std::string block = "[" + sKeyPath + "]" + kCrLf;
        const std::string nul(1, '\0');
        if (ReadString(sKeyPath, "", nul) != nul) block += "@=" + Quoted(ReadString(sKeyPath, "", "")) + kCrLf;

        vb::Array<std::string> names;
        vb::Array<RegValue> values;
        // Texts keep the NUL that ReadString leaves at their end.
        std::int32_t count = EnumValues(sKeyPath, names, values, static_cast<std::int32_t>(reg::kSz));
        for (long i = 0; i < count; ++i)
            if (vb::Len(names[i]) >= 1)
                block += Quoted(names[i]) + "=" + Quoted(std::get<std::string>(values[i])) + kCrLf;
        // The unnamed binary value too, with an empty name.
        count = EnumValues(sKeyPath, names, values, static_cast<std::int32_t>(reg::kBinary));
        for (long i = 0; i < count; ++i)
            block += Quoted(names[i]) + "=hex:" +
                     vb::Replace(vb::Trim(std::get<std::string>(values[i])), " ", ",") + kCrLf;
        count = EnumValues(sKeyPath, names, values, static_cast<std::int32_t>(reg::kDword));
        for (long i = 0; i < count; ++i)
            block += Quoted(names[i]) + "=dword:0x" +
                     vb::Right("00000000" + vb::Hex(std::get<std::int32_t>(values[i])), 8) + kCrLf;
        AppendText(sRegFile, block + kCrLf);
    } catch (const VbError&) {
        return kFalse;
    }

    if (IncludeSubkeys != kFalse) {
        vb::Array<std::string> subkeys;
        const std::int32_t count = EnumKeys(sKeyPath, subkeys);
        for (long i = 0; i < count; ++i)
            if (ExportKey(sKeyPath + "\\" + subkeys[i], sRegFile, IncludeSubkeys, box) == kFalse) return kFalse;
    }
    return kTrue;
}

std::int32_t AdvRegistryAccess::ImportFromReg(std::string sRegFile) {
    CreateKeyIfDoesntExists(kTrue);
    try {
        if (!files_) throw VbError(vb::err::kPathFileAccess);
        if (!files_->FileExists(sRegFile)) return 0;
        std::string contents;
        if (!files_->ReadWholeFile(sRegFile, &contents)) throw VbError(vb::err::kPathFileAccess);
        // Lines end in CR LF only: a file of bare LFs is one line.
        const std::vector<std::string> lines = vb::Split(contents, kCrLf);
        if (lines.empty()) throw VbError(vb::err::kSubscript);
        // Upper-cased but not trimmed; the newer header is refused too.
        if (vb::UCase(lines[0]) != "REGEDIT4") return 0;

        std::size_t i = 1;
        while (i < lines.size()) {
            const std::string line = vb::Replace(vb::Trim(lines[i++]), "\"", "");
            if (vb::Left(line, 1) != "[") continue;
            // The last character goes, whatever it is; a lone "[" is an invalid call.
            const std::string key = vb::Mid(line, 2, vb::Len(line) - 2);
            if (vb::Left(key, 1) == "-") {
                KillKey(vb::Mid(key, 2));
                continue;
            }
            for (; i < lines.size(); ++i) {
                const std::string entry = vb::Trim(vb::Replace(lines[i], "\"", ""));
                if (vb::Left(entry, 1) == "[") break;
                if (vb::Left(entry, 1) == ";" || vb::InStr(entry, "=") == 0 || entry.empty()) continue;
                // Only the first two pieces count: an "=" in a name or text cuts it.
                const std::vector<std::string> pieces = vb::Split(entry, "=");
                const std::string& name = pieces[0];
                const std::string& data = pieces[1];
                if (vb::Trim(data) == "-") {
                    KillValue(key, name);  // "@" here is a value named "@"
                } else if (vb::LCase(vb::Left(data, 4)) == "hex:") {
                    WriteBinary(key, name, vb::Replace(vb::Mid(data, 5), ",", " "));
                } else if (vb::LCase(vb::Left(data, 6)) == "dword:") {
                    // The literal stops at the first non-digit: "0x0000001F" reads as 0.
                    WriteDWORD(key, name, vb::CLng(vb::Val("&H" + vb::Mid(data, 7))));
                } else {
                    WriteString(key, name, data);
                    if (name == "@" && data.empty()) KillValue(key, "");
                }
            }
        }
        return 1;
    } catch (const VbError&) {
        return 0;
    }
}

VbBool AdvRegistryAccess::isBinValid(std::string sBin) {
    sBin = vb::Trim(vb::UCase(vb::Replace(sBin, " ", "")));
    if (sBin.empty()) return kFalse;
    for (long i = 1; i <= vb::Len(sBin); ++i)
        // The character is the text searched, so the digits are never found in it.
        if (vb::InStr(vb::Mid(sBin, i, 1), "0123456789ABCDEF ", vb::Compare::Text) == 0) return kFalse;
    return kTrue;
}

}  // namespace tessmark::registry
