#version 150
in vec3 position;
in vec2 uv;
out vec2 oUV;
void main(){ 
	vec3 iposition = position;
	vec2 iuv = uv;
	vec4 retoProjPos = vec4(0.0);
	vec2 retoUV = vec2(0.0);
	retoProjPos = vec4(iposition,1.0);
	retoUV = iuv;
	gl_Position = retoProjPos; 
	oUV = retoUV; 
}
