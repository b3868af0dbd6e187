#include "Scenes.h"

#include <cstdio>
#include <fstream>
#include <string>

/// Draws every picture of the sample game into the directory given.
int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: draw_pictures DIRECTORY\n", stderr);
        return 2;
    }
    for (const velmora::Scene& scene : velmora::Scenes()) {
        velmora::Canvas canvas(scene.Width, scene.Height);
        scene.Draw(canvas);
        const std::string path = std::string(argv[1]) + "/" + scene.Name + ".pcx";
        std::ofstream file(path, std::ios::binary);
        const std::string bytes = velmora::EncodePcx(canvas.Finish(), scene.Kind);
        if (!file.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush()) {
            std::fprintf(stderr, "cannot write %s\n", path.c_str());
            return 1;
        }
    }
    return 0;
}
