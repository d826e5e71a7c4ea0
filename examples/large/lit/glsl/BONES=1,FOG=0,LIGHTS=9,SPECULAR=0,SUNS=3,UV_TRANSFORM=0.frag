#version 150
uniform sampler2D albedoMap;
uniform vec3 eyePosition;
uniform vec3 ambientColor;
uniform vec4 light_0;
uniform vec3 lightColor_0;
uniform vec4 light_1;
uniform vec3 lightColor_1;
uniform vec4 light_2;
uniform vec3 lightColor_2;
uniform vec4 light_3;
uniform vec3 lightColor_3;
uniform vec4 light_4;
uniform vec3 lightColor_4;
uniform vec4 light_5;
uniform vec3 lightColor_5;
uniform vec4 light_6;
uniform vec3 lightColor_6;
uniform vec4 light_7;
uniform vec3 lightColor_7;
uniform vec4 light_8;
uniform vec3 lightColor_8;
in vec2 oUV;
in vec3 oNormal;
in vec3 oWorldPos;
out vec4 oColor;
void main(){ 
	vec2 ioUV = oUV;
	vec3 ioNormal = oNormal;
	vec3 ioWorldPos = oWorldPos;
	vec4 retoColor = vec4(0.0);
	vec4 albedo = texture(albedoMap,ioUV);
	vec3 surfaceNormal = normalize(ioNormal);
	vec3 toEye = eyePosition-ioWorldPos;
	float eyeDistance = length(toEye);
	vec3 viewDir = toEye/eyeDistance;
	vec3 diffuse = ambientColor;
	vec3 highlights = vec3(0.0,0.0,0.0);
	vec3 lightDir = vec3(0.0,1.0,0.0);
	float attenuation = 1.0;
	// A sun: xyz points to it.
	lightDir = normalize(light_0.xyz);
	attenuation = 1.0;
	diffuse += lightColor_0*(max(dot(surfaceNormal,lightDir),0.0)*attenuation);
	// A sun: xyz points to it.
	lightDir = normalize(light_1.xyz);
	attenuation = 1.0;
	diffuse += lightColor_1*(max(dot(surfaceNormal,lightDir),0.0)*attenuation);
	// A sun: xyz points to it.
	lightDir = normalize(light_2.xyz);
	attenuation = 1.0;
	diffuse += lightColor_2*(max(dot(surfaceNormal,lightDir),0.0)*attenuation);
	// A point light at xyz; w is the inverse of its range.
	lightDir = light_3.xyz-ioWorldPos;
	attenuation = clamp(1.0-length(lightDir)*light_3.w,0.0,1.0);
	attenuation *= attenuation;
	lightDir = normalize(lightDir);
	diffuse += lightColor_3*(max(dot(surfaceNormal,lightDir),0.0)*attenuation);
	// A point light at xyz; w is the inverse of its range.
	lightDir = light_4.xyz-ioWorldPos;
	attenuation = clamp(1.0-length(lightDir)*light_4.w,0.0,1.0);
	attenuation *= attenuation;
	lightDir = normalize(lightDir);
	diffuse += lightColor_4*(max(dot(surfaceNormal,lightDir),0.0)*attenuation);
	// A point light at xyz; w is the inverse of its range.
	lightDir = light_5.xyz-ioWorldPos;
	attenuation = clamp(1.0-length(lightDir)*light_5.w,0.0,1.0);
	attenuation *= attenuation;
	lightDir = normalize(lightDir);
	diffuse += lightColor_5*(max(dot(surfaceNormal,lightDir),0.0)*attenuation);
	// A point light at xyz; w is the inverse of its range.
	lightDir = light_6.xyz-ioWorldPos;
	attenuation = clamp(1.0-length(lightDir)*light_6.w,0.0,1.0);
	attenuation *= attenuation;
	lightDir = normalize(lightDir);
	diffuse += lightColor_6*(max(dot(surfaceNormal,lightDir),0.0)*attenuation);
	// A point light at xyz; w is the inverse of its range.
	lightDir = light_7.xyz-ioWorldPos;
	attenuation = clamp(1.0-length(lightDir)*light_7.w,0.0,1.0);
	attenuation *= attenuation;
	lightDir = normalize(lightDir);
	diffuse += lightColor_7*(max(dot(surfaceNormal,lightDir),0.0)*attenuation);
	// A point light at xyz; w is the inverse of its range.
	lightDir = light_8.xyz-ioWorldPos;
	attenuation = clamp(1.0-length(lightDir)*light_8.w,0.0,1.0);
	attenuation *= attenuation;
	lightDir = normalize(lightDir);
	diffuse += lightColor_8*(max(dot(surfaceNormal,lightDir),0.0)*attenuation);
	vec3 lit = albedo.xyz*diffuse;
	retoColor = vec4(lit,albedo.w);
	oColor = retoColor; 
}
