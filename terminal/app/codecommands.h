#pragma once

struct CommandLine;

/// What the terminal does with payment codes without opening its window.
namespace CodeCommands {

/// Whether the command line asks for any of it.
bool wanted(const CommandLine &commandLine);
/// Writes the bill, or prints the text of the code to the standard output. False after a message to
/// the standard error stream. Needs a QGuiApplication and no data folder.
bool run(const CommandLine &commandLine);

} // namespace CodeCommands
