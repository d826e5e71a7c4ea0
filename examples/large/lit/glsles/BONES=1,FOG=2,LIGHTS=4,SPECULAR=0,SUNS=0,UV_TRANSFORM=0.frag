#version 100
precision highp int; 
precision highp float; 
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
uniform vec3 fogColor;
uniform vec3 fogRange;
varying vec2 oUV;
varying vec3 oNormal;
varying vec3 oWorldPos;
void main(){ 
	vec2 ioUV = oUV;
	vec3 ioNormal = oNormal;
	vec3 ioWorldPos = oWorldPos;
	vec4 retoColor = vec4(1.0);
	vec4 albedo = texture2D(albedoMap,ioUV);
	vec3 surfaceNormal = normalize(ioNormal);
	vec3 toEye = eyePosition-ioWorldPos;
	float eyeDistance = length(toEye);
	vec3 viewDir = toEye/eyeDistance;
	vec3 diffuse = ambientColor;
	vec3 highlights = vec3(0.0,0.0,0.0);
	vec3 lightDir = vec3(0.0,1.0,0.0);
	float attenuation = 1.0;
	// A point light at xyz; w is the inverse of its range.
	lightDir = light_0.xyz-ioWorldPos;
	attenuation = clamp(1.0-length(lightDir)*light_0.w,0.0,1.0);
	attenuation *= attenuation;
	lightDir = normalize(lightDir);
	diffuse += lightColor_0*(max(dot(surfaceNormal,lightDir),0.0)*attenuation);
	// A point light at xyz; w is the inverse of its range.
	lightDir = light_1.xyz-ioWorldPos;
	attenuation = clamp(1.0-length(lightDir)*light_1.w,0.0,1.0);
	attenuation *= attenuation;
	lightDir = normalize(lightDir);
	diffuse += lightColor_1*(max(dot(surfaceNormal,lightDir),0.0)*attenuation);
	// A point light at xyz; w is the inverse of its range.
	lightDir = light_2.xyz-ioWorldPos;
	attenuation = clamp(1.0-length(lightDir)*light_2.w,0.0,1.0);
	attenuation *= attenuation;
	lightDir = normalize(lightDir);
	diffuse += lightColor_2*(max(dot(surfaceNormal,lightDir),0.0)*attenuation);
	// A point light at xyz; w is the inverse of its range.
	lightDir = light_3.xyz-ioWorldPos;
	attenuation = clamp(1.0-length(lightDir)*light_3.w,0.0,1.0);
	attenuation *= attenuation;
	lightDir = normalize(lightDir);
	diffuse += lightColor_3*(max(dot(surfaceNormal,lightDir),0.0)*attenuation);
	vec3 lit = albedo.xyz*diffuse;
	float clearness = pow(2.7182818,-(eyeDistance*fogRange.z));
	lit = mix(fogColor,lit,clamp(clearness,0.0,1.0));
	retoColor = vec4(lit,albedo.w);
	gl_FragColor = retoColor; 
}
