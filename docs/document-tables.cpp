// Brings the tables of docs/document.md in line with the format:
//
//     document-tables [--check] FILE
//
// With --check the file is not written. The exit status is 1 when it was not, or is still not, as it should
// be.

#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "FormatTables.h"

namespace {

int Complain(const std::string& complaint) {
    std::cerr << "document-tables: " << complaint << '\n';
    return 1;
}

int Run(const char* path, bool isCheckOnly) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream read;
    if (!(read << file.rdbuf())) {
        return Complain(std::string("cannot read ") + path);
    }
    const std::string text = read.str();
    const RewrittenText rewritten = RewriteTables(text, FormatTables());
    int status = 0;
    for (const std::string& complaint : rewritten.complaints) {
        status = Complain(path + (": " + complaint));
    }
    if (rewritten.text == text) {
        return status;
    }
    if (isCheckOnly) {
        return Complain(std::string(path) +
                        ": the tables are not those of the format; ./dev docs rewrites them");
    }
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << rewritten.text;
    out.close();
    return out ? status : Complain(std::string("cannot write ") + path);
}

}  // namespace

int main(int count, char** arguments) {
    const bool isCheckOnly = count == 3 && std::strcmp(arguments[1], "--check") == 0;
    if (count != 2 && !isCheckOnly) {
        std::cerr << "Usage: document-tables [--check] FILE\n";
        return 2;
    }
    return Run(arguments[count - 1], isCheckOnly);
}
