// The manual pages, made from the tables that --help is made from.
#pragma once

#include <string>

namespace sonavel {

std::string EditorPage(const std::string& version);
std::string BatchPage(const std::string& version);

}  // namespace sonavel
