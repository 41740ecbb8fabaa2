#include <exception>
#include <iostream>

#include "batch/batch_call.h"

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    try {
        return sonavel::batch::RunBatchTool({argv + 1, argv + argc},
                                            {std::cin, std::cout, std::cerr});
    } catch (const std::exception& error) {
        std::cerr << "sonavel-batch: " << error.what() << '\n';
        return 1;
    }
}
