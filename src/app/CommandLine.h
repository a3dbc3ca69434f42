#pragma once

/// Does what the first of the options "--help", "--version" and "--autostart on|off" asks for, and
/// ends the process: with status 0, with 1 if it cannot be done, or with 2 if "--autostart" is
/// followed by something else. Returns where there is none of them. Needs neither a display nor a
/// bus.
void runCommandLine(int argc, char* argv[]);
