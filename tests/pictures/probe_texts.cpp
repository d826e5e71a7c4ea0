// SPDX-License-Identifier: MIT
// morl_probe_texts: writes the GLSL ES texts of all probes' wrong lines to standard output, for the
// test with WebGL: a JSON list of objects with "name", "vertex", "fragment" and the expected
// "webgl".
#include "pictures/probes.h"

#include <json/json.h>
#include <iostream>

int main()
{
    Json::Value list(Json::arrayValue);
    for (const morl_test::Probe& probe : morl_test::ReadProbes()) {
        const morl_test::SampleTexts texts = morl_test::CompileProbe(probe, "glsles", false);
        Json::Value entry;
        entry["name"] = probe.row;
        entry["vertex"] = texts.vertex;
        entry["fragment"] = texts.fragment;
        entry["webgl"] = probe.webGl;
        list.append(entry);
    }
    std::cout << list << "\n";
}
