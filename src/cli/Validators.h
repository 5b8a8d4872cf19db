#pragma once

#include <CLI/CLI.hpp>

#include <QString>

#include <functional>

/// The checks of what is typed on the command line, with their reasons in Spanish.
namespace validators {

/// `reason` gives why a text is wrong, empty when it is right.
CLI::Validator makeValidator(const std::function<QString(const QString& text)>& reason);

/// A whole number of this range, for `transform`: it takes the zeros from its front, since CLI11
/// would read it as octal.
CLI::Validator number(int lowest, int highest);
/// A COM number, the path of a device where the system has such, or a network address.
CLI::Validator port();
/// A COM number.
CLI::Validator comPort();
/// What a COM number may be made to be: the path of a device where the system has such, or a
/// network address.
CLI::Validator device();
/// "9600", "9600,N", "9600,N,8" or "9600,N,8,1".
CLI::Validator line();
/// The name of a file, whether there is one or not.
CLI::Validator fileName();
/// A telephone number as a modem takes it.
CLI::Validator telephone();

} // namespace validators
