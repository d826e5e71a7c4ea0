// SPDX-License-Identifier: MIT
// A lit, textured sphere in OpenSceneGraph, whose shaders are compiled again when their node files
// change:
//
//     osg_sphere DIRECTORY [FRAMES PICTURE]
//
// DIRECTORY is the one with the folder morl/. With FRAMES it draws so many frames without a window,
// waiting for a line of input before each, and writes the last one as PICTURE.
#include "material.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <cmath>
#include <iostream>
#include <osg/Geometry>
#include <osg/Texture2D>
#include <osgDB/WriteFile>
#include <osgViewer/Viewer>

namespace {

constexpr int kSize = 128;  ///< of the picture, in pixels

/// A sphere of radius 1.
osg::ref_ptr<osg::Geometry> MakeSphere()
{
    constexpr int kRings = 32;
    constexpr double kPi = 3.14159265358979;
    osg::ref_ptr<osg::Vec3Array> points = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec2Array> coordinates = new osg::Vec2Array;
    osg::ref_ptr<osg::DrawElementsUInt> triangles = new osg::DrawElementsUInt(GL_TRIANGLES);
    for (int ring = 0; ring <= kRings; ++ring) {
        for (int i = 0; i <= 2 * kRings; ++i) {
            const double latitude = kPi * (static_cast<double>(ring) / kRings - 0.5);
            const double longitude = kPi * i / kRings;
            points->push_back({static_cast<float>(std::cos(latitude) * std::cos(longitude)),
                               static_cast<float>(std::cos(latitude) * std::sin(longitude)),
                               static_cast<float>(std::sin(latitude))});
            coordinates->push_back(
                {static_cast<float>(i) / (2 * kRings), static_cast<float>(ring) / kRings});
        }
    }
    constexpr unsigned kRow = 2 * kRings + 1;
    for (unsigned i = 0; i + kRow + 1 < points->size(); ++i) {
        for (const unsigned corner : {i, i + 1, i + kRow + 1, i, i + kRow + 1, i + kRow}) {
            triangles->push_back(corner);
        }
    }
    osg::ref_ptr<osg::Geometry> sphere = new osg::Geometry;
    sphere->setVertexArray(points);
    sphere->setVertexAttribArray(0, points, osg::Array::BIND_PER_VERTEX);
    sphere->setVertexAttribArray(1, points, osg::Array::BIND_PER_VERTEX);  // the normals
    sphere->setVertexAttribArray(2, coordinates, osg::Array::BIND_PER_VERTEX);
    sphere->addPrimitiveSet(triangles);
    sphere->setUseVertexBufferObjects(true);
    return sphere;
}

/// A chessboard.
osg::ref_ptr<osg::Texture2D> MakeTexture()
{
    osg::ref_ptr<osg::Image> image = new osg::Image;
    image->allocateImage(16, 16, 1, GL_RGBA, GL_UNSIGNED_BYTE);
    for (unsigned y = 0; y < 16; ++y) {
        for (unsigned x = 0; x < 16; ++x) {
            const bool isLight = (x / 2 + y / 2) % 2 == 0;
            image->setColor(
                isLight ? osg::Vec4(0.9F, 0.7F, 0.4F, 1) : osg::Vec4(0.3F, 0.2F, 0.5F, 1), x, y);
        }
    }
    osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(image);
    texture->setFilter(osg::Texture::MIN_FILTER, osg::Texture::NEAREST);
    texture->setFilter(osg::Texture::MAG_FILTER, osg::Texture::NEAREST);
    return texture;
}

/// The shaders want the factors of a component next to each other; this engine has them in rows.
osg::Matrixf ForShader(const osg::Matrixd& matrix)
{
    osg::Matrixf transposed;
    transposed.transpose(osg::Matrixf(matrix));
    return transposed;
}

void SetUniforms(Material& material, const osg::Camera& camera)
{
    osg::Vec3d eye;
    osg::Vec3d center;
    osg::Vec3d up;
    camera.getViewMatrixAsLookAt(eye, center, up);
    material.Set("world", ForShader(osg::Matrixd::identity()));
    material.Set("worldViewProj", ForShader(camera.getViewMatrix() * camera.getProjectionMatrix()));
    material.Set("eyePosition", osg::Vec3(eye));
    material.Set("albedoMap", 0);
    material.Set("ambientColor", osg::Vec3(0.15F, 0.15F, 0.2F));
    material.Set("light_0", osg::Vec4(1, -1, 1, 0));
    material.Set("lightColor_0", osg::Vec3(1, 1, 1));
    material.Set("specularColor", osg::Vec3(0.4F, 0.4F, 0.4F));
    material.Set("shininess", 30.0F);
}

/// A context without a window, which stays current.
bool MakeContext()
{
    const EGLDisplay display =
        eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
    if (eglInitialize(display, nullptr, nullptr) != EGL_TRUE) {
        return false;
    }
    eglBindAPI(EGL_OPENGL_API);
    const EGLint configs[] = {EGL_SURFACE_TYPE,
                              EGL_PBUFFER_BIT,
                              EGL_RENDERABLE_TYPE,
                              EGL_OPENGL_BIT,
                              EGL_DEPTH_SIZE,
                              24,
                              EGL_ALPHA_SIZE,
                              8,
                              EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    eglChooseConfig(display, configs, &config, 1, &count);
    const EGLint size[] = {EGL_WIDTH, kSize, EGL_HEIGHT, kSize, EGL_NONE};
    const EGLSurface surface = eglCreatePbufferSurface(display, config, size);
    const EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
    return eglMakeCurrent(display, surface, surface, context) == EGL_TRUE;
}

void PlaceCamera(osgViewer::Viewer& viewer)
{
    viewer.getCamera()->setClearColor({0.1F, 0.1F, 0.1F, 1});
    viewer.getCamera()->setComputeNearFarMode(osg::Camera::DO_NOT_COMPUTE_NEAR_FAR);
    viewer.getCamera()->setProjectionMatrixAsPerspective(40, 1, 1, 10);
    viewer.getCamera()->setViewMatrixAsLookAt({0, -4, 1}, {0, 0, 0}, {0, 0, 1});
}

bool DrawWithoutWindow(osgViewer::Viewer& viewer, Material& material, int frames,
                       const std::string& picture)
{
    viewer.setThreadingModel(osgViewer::Viewer::SingleThreaded);
    viewer.setUpViewerAsEmbeddedInWindow(0, 0, kSize, kSize);
    PlaceCamera(viewer);
    viewer.realize();
    for (int i = 0; i < frames; ++i) {
        std::string line;
        std::getline(std::cin, line);
        std::cout << (material.Reload() ? "new shaders" : "the same shaders") << std::endl;
        SetUniforms(material, *viewer.getCamera());
        viewer.frame();
    }
    osg::ref_ptr<osg::Image> image = new osg::Image;
    image->readPixels(0, 0, kSize, kSize, GL_RGB, GL_UNSIGNED_BYTE);
    return osgDB::writeImageFile(*image, picture);
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2 && argc != 4) {
        std::cerr << "usage: osg_sphere DIRECTORY [FRAMES PICTURE]\n";
        return 1;
    }
    Material material(argv[1]);
    osg::ref_ptr<osg::Geode> scene = new osg::Geode;
    scene->addDrawable(MakeSphere());
    scene->setStateSet(material.state);
    scene->setCullingActive(false);
    material.state->setTextureAttributeAndModes(0, MakeTexture());
    osgViewer::Viewer viewer;
    viewer.setSceneData(scene);
    if (argc == 4) {
        if (!MakeContext()) {
            std::cerr << "osg_sphere: there is no OpenGL without a window here\n";
            return 1;
        }
        return DrawWithoutWindow(viewer, material, std::stoi(argv[2]), argv[3]) ? 0 : 1;
    }
    PlaceCamera(viewer);
    viewer.realize();
    while (!viewer.done()) {
        material.Reload();
        SetUniforms(material, *viewer.getCamera());
        viewer.frame();
    }
    return 0;
}
