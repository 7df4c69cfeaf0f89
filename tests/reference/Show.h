#pragma once

#include <OuString.h>
#include <libjson.h>

#include <string>

/// Texts with everything but plain characters as numbers, so that nothing is lost where they are printed and
/// compared.

std::string ShowBytes(const std::string& text);
std::string ShowText(const OuString& text);

/// The node with its types, names and values, one node a line. The names of array elements are among them,
/// which no text has.
std::string ShowNode(const JSONNode& node);
