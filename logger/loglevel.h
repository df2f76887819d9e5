#pragma once

enum class LogLevel { Debug, Info, Warning, Error, Critical, Fatal, Trace };
