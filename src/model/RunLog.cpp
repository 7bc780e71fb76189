#include "model/RunLog.h"

#include <cstdio>

#include "platform/LocalTime.h"
#include "platform/Win1252.h"

namespace skl {

namespace {

std::string DateTimeText() {
    platform::LocalTime now = platform::LocalTimeNow();
    char text[80];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", now.Year, now.Month, now.Day,
                  now.Hour, now.Minute, now.Second);
    return text;
}

}  // namespace

void OpenLogFile(RunState& state, const std::string& fileName) {
    Files& files = state.Files;
    files.LogFilePath = state.Selection.ProgramFolder + "\\" + fileName;
    std::string native = platform::ToNative(state.Selection.Drives, files.LogFilePath);
    if (!native.empty()) std::remove(native.c_str());
    files.LogFile = static_cast<int16_t>(files.Table.FreeFile());
    ErrorOf([&] { files.Table.OpenOutput(files.LogFile, native); });
    ErrorOf([&] {
        LogLine(state, state.Selection.ProgramFolder + " Database Manager " + kVersionLine + " " +
                           DateTimeText());
    });
}

void LogLine(RunState& state, std::string_view text) {
    state.Files.Table.WriteLine(state.Files.LogFile, text);
}

void TryLogLine(RunState& state, std::string_view text) {
    try {
        LogLine(state, text);
    } catch (const std::exception&) {
    }
}

std::string NumberWithSign(long long value) {
    return (value >= 0 ? " " : "") + std::to_string(value);
}

void LogErrorBlock(RunState& state, std::string_view procedure, int number,
                   const std::function<void()>& extraLines) {
    LogLine(state, "===== Error Error Error =====");
    LogLine(state, "Source: " + std::string(procedure) + " " + " = " + NumberWithSign(number) +
                       " = " + ErrorDescription(number));
    if (extraLines) extraLines();
    LogLine(state, "=============================");
}

void LogReaderError(RunState& state, std::string_view procedure, int number) {
    LogLine(state, "Error detection and correction in " + std::string(procedure) + ": " +
                       Upper1252(TrimBlanks(state.Reading.CurrentBglFile)) + " (#" +
                       std::to_string(number) + ")");
}

int ErrorOfCurrentException() {
    try {
        throw;
    } catch (const RunAborted&) {
        throw;
    } catch (const RunStopped&) {
        throw;
    } catch (...) {
        return CurrentErrorNumber(std::current_exception());
    }
}

void FailedBlockStatement(RunState& state, std::string_view procedure, int number,
                          const std::function<void()>& extraLines) {
    LogErrorBlock(state, procedure, number, extraLines);
    if (number == kPathFileAccess || number == kBadFileNumber) throw RunAborted{};
}

}  // namespace skl
