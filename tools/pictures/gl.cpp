// SPDX-License-Identifier: MIT
#define GL_GLEXT_PROTOTYPES
#include "pictures/gl.h"

#include "pictures/scene.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/glcorearb.h>
#include <algorithm>
#include <stdexcept>
#include <vector>

namespace pictures {
namespace {

constexpr auto kSize = static_cast<GLsizei>(kPictureSize);

void Require(bool holds, const std::string& what)
{
    if (!holds) {
        throw std::runtime_error(what);
    }
}

using GetInfoLog = void (*)(GLuint, GLsizei, GLsizei*, GLchar*);

/// What the implementation says of a shader or program.
std::string InfoLog(GLuint object, GetInfoLog get)
{
    std::string log(4096, '\0');
    GLsizei length = 0;
    get(object, static_cast<GLsizei>(log.size()), &length, log.data());
    log.resize(static_cast<std::size_t>(length));
    return log;
}

GLuint CompileStage(GLenum stage, const std::string& code)
{
    const GLuint shader = glCreateShader(stage);
    const char* const text = code.c_str();
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    GLint isCompiled = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &isCompiled);
    if (isCompiled != GL_TRUE) {
        throw Refused(InfoLog(shader, glGetShaderInfoLog) + "\n" + code);
    }
    return shader;
}

GLuint LinkProgram(const std::string& vertex, const std::string& fragment)
{
    const GLuint program = glCreateProgram();
    for (const auto& [stage, code] : {std::pair(GLenum{GL_VERTEX_SHADER}, &vertex),
                                      std::pair(GLenum{GL_FRAGMENT_SHADER}, &fragment)}) {
        const GLuint shader = CompileStage(stage, *code);
        glAttachShader(program, shader);
        glDeleteShader(shader);
    }
    glLinkProgram(program);
    GLint isLinked = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &isLinked);
    if (isLinked != GL_TRUE) {
        throw Refused(InfoLog(program, glGetProgramInfoLog) + "\n" + vertex + fragment);
    }
    return program;
}

/// A uniform, attribute or sampler of a linked program.
struct Variable {
    std::string name;  ///< as the sample nodes call it
    std::string full;  ///< as the program calls it
    GLenum type = 0;
};

/// The name that a translated text has made longer: "_Global_vert.world", "input_uv", "bones[0]",
/// "SPIRV_Cross_CombinedalbedoMapsampler_albedoMap".
std::string OwnName(std::string name)
{
    name = name.substr(0, name.find('['));
    name = name.substr(name.find('.') + 1);
    for (const std::string prefix : {"input_", "SPIRV_Cross_Combined"}) {
        name = name.substr(name.compare(0, prefix.size(), prefix) == 0 ? prefix.size() : 0);
    }
    return name.substr(0, name.find("sampler_"));
}

using GetVariable = void (*)(GLuint, GLuint, GLsizei, GLsizei*, GLint*, GLenum*, GLchar*);

std::vector<Variable> Variables(GLuint program, GLenum count, GetVariable get)
{
    GLint size = 0;
    glGetProgramiv(program, count, &size);
    std::vector<Variable> variables;
    for (GLint i = 0; i < size; ++i) {
        char name[256] = {};
        GLint elements = 0;
        GLenum type = 0;
        get(program, static_cast<GLuint>(i), sizeof name, nullptr, &elements, &type, name);
        variables.push_back({OwnName(name), name, type});
    }
    return variables;
}

bool IsSampler(GLenum type)
{
    return type == GL_SAMPLER_2D || type == GL_SAMPLER_CUBE || type == GL_SAMPLER_2D_SHADOW;
}

/// How many floats an element of a type has.
std::size_t FloatsOf(GLenum type)
{
    switch (type) {
    case GL_FLOAT:
        return 1;
    case GL_FLOAT_VEC2:
        return 2;
    case GL_FLOAT_VEC3:
        return 3;
    case GL_FLOAT_VEC4:
        return 4;
    case GL_FLOAT_MAT3x4:
    case GL_FLOAT_MAT4x3:
        return 12;
    case GL_FLOAT_MAT4:
        return 16;
    default:
        throw std::logic_error("the scene sets no uniforms of this type");
    }
}

void SetPlain(GLint place, GLenum type, const std::vector<float>& values)
{
    const auto count = static_cast<GLsizei>(values.size() / FloatsOf(type));
    const float* const first = values.data();
    switch (type) {
    case GL_FLOAT:
        glUniform1fv(place, count, first);
        break;
    case GL_FLOAT_VEC2:
        glUniform2fv(place, count, first);
        break;
    case GL_FLOAT_VEC3:
        glUniform3fv(place, count, first);
        break;
    case GL_FLOAT_VEC4:
        glUniform4fv(place, count, first);
        break;
    default:
        glUniformMatrix4fv(place, count, GL_FALSE, first);
        break;
    }
}

/// Copies values into a block as Direct3D has them in its constants: columns, one after the other.
/// An array may have fewer elements than there are values.
void SetInBlock(GLuint program, GLuint index, const Variable& variable, std::vector<float>& block)
{
    GLint offset = 0;
    GLint elements = 0;
    glGetActiveUniformsiv(program, 1, &index, GL_UNIFORM_OFFSET, &offset);
    glGetActiveUniformsiv(program, 1, &index, GL_UNIFORM_SIZE, &elements);
    const std::size_t floats = FloatsOf(variable.type);
    if (elements > 1 && floats % 4 != 0) {
        throw std::logic_error("the scene sets no arrays that need padding");
    }
    const std::vector<float>& values = UniformValues(variable.name);
    const std::size_t count = std::min(values.size(), floats * static_cast<std::size_t>(elements));
    std::copy_n(values.begin(), count, &block.at(static_cast<std::size_t>(offset) / 4));
}

/// What is made for one picture.
struct Made {
    Made() = default;
    Made(const Made&) = delete;
    Made& operator=(const Made&) = delete;
    ~Made()
    {
        for (const GLuint place : attributes) {
            glDisableVertexAttribArray(place);
        }
        glDeleteBuffers(static_cast<GLsizei>(buffers.size()), buffers.data());
        glDeleteTextures(static_cast<GLsizei>(textures.size()), textures.data());
        glDeleteRenderbuffers(1, &depth);
        glDeleteFramebuffers(1, &frame);
        glDeleteProgram(program);
    }

    GLuint NewBuffer()
    {
        glGenBuffers(1, &buffers.emplace_back());
        return buffers.back();
    }
    GLuint NewTexture()
    {
        glGenTextures(1, &textures.emplace_back());
        return textures.back();
    }

    GLuint frame = 0;
    GLuint depth = 0;
    GLuint program = 0;
    std::vector<GLuint> buffers{};
    std::vector<GLuint> textures{};
    std::vector<GLuint> attributes{};
};

void SetBlocks(GLuint program, const std::vector<Variable>& variables, Made& made)
{
    GLint count = 0;
    glGetProgramiv(program, GL_ACTIVE_UNIFORM_BLOCKS, &count);
    for (GLint i = 0; i < count; ++i) {
        const auto blockIndex = static_cast<GLuint>(i);
        GLint bytes = 0;
        glGetActiveUniformBlockiv(program, blockIndex, GL_UNIFORM_BLOCK_DATA_SIZE, &bytes);
        std::vector<float> block(static_cast<std::size_t>(bytes) / 4);
        for (GLuint j = 0; j < variables.size(); ++j) {
            GLint owner = -1;
            glGetActiveUniformsiv(program, 1, &j, GL_UNIFORM_BLOCK_INDEX, &owner);
            if (owner == i) {
                SetInBlock(program, j, variables[j], block);
            }
        }
        glBindBufferBase(GL_UNIFORM_BUFFER, blockIndex, made.NewBuffer());
        glBufferData(GL_UNIFORM_BUFFER, bytes, block.data(), GL_STATIC_DRAW);
        glUniformBlockBinding(program, blockIndex, blockIndex);
    }
}

void LoadPicture(GLenum target, const Image& picture, bool isDepth)
{
    const auto width = static_cast<GLsizei>(picture.width);
    const auto height = static_cast<GLsizei>(picture.height);
    if (!isDepth) {
        glTexImage2D(target, 0, GL_RGBA, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                     picture.pixels.data());
        return;
    }
    std::vector<float> depths;
    for (const Pixel& pixel : picture.pixels) {
        depths.push_back(static_cast<float>(pixel[0]) / 255);
    }
    glTexImage2D(target, 0, GL_DEPTH_COMPONENT24, width, height, 0, GL_DEPTH_COMPONENT, GL_FLOAT,
                 depths.data());
    glTexParameteri(target, GL_TEXTURE_COMPARE_MODE, GL_COMPARE_REF_TO_TEXTURE);
    glTexParameteri(target, GL_TEXTURE_COMPARE_FUNC, GL_LEQUAL);
}

void SetTexture(GLint unit, const Variable& sampler, Made& made)
{
    glActiveTexture(static_cast<GLenum>(GL_TEXTURE0 + unit));
    const bool isCube = sampler.type == GL_SAMPLER_CUBE;
    const GLenum target = isCube ? GL_TEXTURE_CUBE_MAP : GL_TEXTURE_2D;
    glBindTexture(target, made.NewTexture());
    if (isCube) {
        GLenum side = GL_TEXTURE_CUBE_MAP_POSITIVE_X;
        for (const Image& picture : CubePictures()) {
            LoadPicture(side++, picture, false);
        }
    } else {
        LoadPicture(target, TexturePicture(sampler.name), sampler.type == GL_SAMPLER_2D_SHADOW);
    }
    const GLint filter = sampler.name == "shadowMapSun" ? GL_NEAREST : GL_LINEAR;
    glTexParameteri(target, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(target, GL_TEXTURE_MAG_FILTER, filter);
    glTexParameteri(target, GL_TEXTURE_WRAP_S, isCube ? GL_CLAMP_TO_EDGE : GL_REPEAT);
    glTexParameteri(target, GL_TEXTURE_WRAP_T, isCube ? GL_CLAMP_TO_EDGE : GL_REPEAT);
}

void SetUniforms(GLuint program, GlApi api, Made& made)
{
    const auto variables = Variables(program, GL_ACTIVE_UNIFORMS, glGetActiveUniform);
    GLint unit = 0;
    for (const Variable& variable : variables) {
        const GLint place = glGetUniformLocation(program, variable.full.c_str());
        if (IsSampler(variable.type)) {
            glUniform1i(place, unit);
            SetTexture(unit++, variable, made);
        } else if (place >= 0) {
            SetPlain(place, variable.type, UniformValues(variable.name));
        }
    }
    if (api == GlApi::Core) {
        SetBlocks(program, variables, made);
    }
}

template <class T>
void FillBuffer(GLenum target, const std::vector<T>& values, Made& made)
{
    glBindBuffer(target, made.NewBuffer());
    glBufferData(target, static_cast<GLsizeiptr>(values.size() * sizeof(T)), values.data(),
                 GL_STATIC_DRAW);
}

void SetAttributes(GLuint program, const Mesh& mesh, Made& made)
{
    for (const Variable& variable : Variables(program, GL_ACTIVE_ATTRIBUTES, glGetActiveAttrib)) {
        const auto found =
            std::find_if(mesh.attributes.begin(), mesh.attributes.end(),
                         [&](const auto& attribute) { return attribute.name == variable.name; });
        Require(found != mesh.attributes.end(), "the mesh has no attribute " + variable.name);
        const auto place = static_cast<GLuint>(glGetAttribLocation(program, variable.full.c_str()));
        glEnableVertexAttribArray(place);
        made.attributes.push_back(place);
        if (variable.type == GL_UNSIGNED_INT_VEC4) {
            FillBuffer(GL_ARRAY_BUFFER,
                       std::vector<GLuint>(found->values.begin(), found->values.end()), made);
            glVertexAttribIPointer(place, found->components, GL_UNSIGNED_INT, 0, nullptr);
        } else {
            FillBuffer(GL_ARRAY_BUFFER, found->values, made);
            glVertexAttribPointer(place, found->components, GL_FLOAT, GL_FALSE, 0, nullptr);
        }
    }
    FillBuffer(GL_ELEMENT_ARRAY_BUFFER, mesh.indices, made);
}

Image ReadPicture()
{
    Image image(kPictureSize, kPictureSize);
    glReadPixels(0, 0, kSize, kSize, GL_RGBA, GL_UNSIGNED_BYTE, image.pixels.data());
    for (std::size_t y = 0; y < kPictureSize / 2; ++y) {
        std::swap_ranges(&image.At(0, y), &image.At(0, y) + kPictureSize,
                         &image.At(0, kPictureSize - 1 - y));
    }
    return image;
}

}  // namespace

struct GlContext::State {
    /// Lets the calling thread draw with this context.
    void MakeCurrent() const
    {
        Require(eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context) == EGL_TRUE,
                "the context cannot be used");
    }

    GlApi api = GlApi::Core;
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLContext context = EGL_NO_CONTEXT;
};

GlContext::GlContext(GlApi api) : state(new State{api})
{
    // In software, also where there is a graphics card: pictures are the same everywhere.
    ::setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1);
    state->display = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
    Require(eglInitialize(state->display, nullptr, nullptr) == EGL_TRUE, "EGL does not start");
    const bool isCore = api == GlApi::Core;
    eglBindAPI(isCore ? EGL_OPENGL_API : EGL_OPENGL_ES_API);
    const std::vector<EGLint> attributes =
        isCore ? std::vector<EGLint>{EGL_CONTEXT_MAJOR_VERSION,
                                     3,
                                     EGL_CONTEXT_MINOR_VERSION,
                                     2,
                                     EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                     EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                     EGL_NONE}
               : std::vector<EGLint>{EGL_CONTEXT_MAJOR_VERSION, 2, EGL_NONE};
    state->context =
        eglCreateContext(state->display, EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, attributes.data());
    Require(state->context != EGL_NO_CONTEXT, "EGL has no such context");
}

GlContext::~GlContext()
{
    eglMakeCurrent(state->display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(state->display, state->context);
}

std::string GlContext::Name() const
{
    state->MakeCurrent();
    return std::string(reinterpret_cast<const char*>(glGetString(GL_RENDERER))) + ", " +
           reinterpret_cast<const char*>(glGetString(GL_VERSION));
}

void GlContext::Link(const std::string& vertex, const std::string& fragment)
{
    state->MakeCurrent();
    glDeleteProgram(LinkProgram(vertex, fragment));
}

Image GlContext::Draw(const std::string& vertex, const std::string& fragment)
{
    state->MakeCurrent();
    Made made;
    const GLuint colour = made.NewTexture();
    glBindTexture(GL_TEXTURE_2D, colour);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, kSize, kSize, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    glGenRenderbuffers(1, &made.depth);
    glBindRenderbuffer(GL_RENDERBUFFER, made.depth);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH_COMPONENT16, kSize, kSize);
    glGenFramebuffers(1, &made.frame);
    glBindFramebuffer(GL_FRAMEBUFFER, made.frame);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, colour, 0);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, made.depth);
    glViewport(0, 0, kSize, kSize);
    glEnable(GL_DEPTH_TEST);
    glClearColor(0.2F, 0.2F, 0.25F, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (state->api == GlApi::Core) {
        glEnable(GL_TEXTURE_CUBE_MAP_SEAMLESS);  // as OpenGL ES always does
        GLuint arrays = 0;
        glGenVertexArrays(1, &arrays);
        glBindVertexArray(arrays);
    }
    made.program = LinkProgram(vertex, fragment);
    glUseProgram(made.program);
    const Mesh& mesh = vertex.find("worldViewProj") == std::string::npos ? Quad() : Sphere();
    SetUniforms(made.program, state->api, made);
    SetAttributes(made.program, mesh, made);
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(mesh.indices.size()), GL_UNSIGNED_SHORT,
                   nullptr);
    Require(glGetError() == GL_NO_ERROR, "OpenGL reports an error");
    return ReadPicture();
}

}  // namespace pictures
